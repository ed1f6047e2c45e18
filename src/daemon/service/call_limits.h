#pragma once

#include "daemon/service/admission.h"

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>

namespace TALO::Wifid {

/// So many calls are worked on at once. Those of a user leave room for others, whatever number of connections
/// it has.
constexpr std::size_t kMaximumCallsOfCaller = 16;
constexpr std::size_t kMaximumCallsOfUser = 128;
constexpr std::size_t kMaximumCalls = 256;

/// Counts the calls that the daemon works on.
class CallLimits {
 public:
  CallLimits();

  /// A place for a call of `caller`, a connection's unique name, that acts for `user`; LimitReached where all
  /// of one kind are taken. Places may outlive this.
  Result<std::shared_ptr<const Place>> Enter(const std::string& caller, uid_t user);

  /// The caller has left the bus.
  void Leave(const std::string& caller);

 private:
  struct Connection;
  struct Tally;
  class TakenPlace;

  std::shared_ptr<Tally> tally_;
};

}  // namespace TALO::Wifid
