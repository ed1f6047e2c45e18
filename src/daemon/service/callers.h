#pragma once

#include "bus/message.h"
#include "daemon/service/access.h"
#include "daemon/service/admission.h"
#include "daemon/service/call_limits.h"
#include "daemon/service/log.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// So many callers are remembered, so that only the first call of each asks the bus who it is.
constexpr std::size_t kMaximumCallers = 1024;

/// Stands before every call of the bus: lets it through to the daemon's objects where the caller is an
/// administrator and the call is of a sane size, and answers it otherwise. Does not trust the bus's policy to
/// have done so. The calls of one caller stay in their order.
class Callers {
 public:
  using Identified = std::function<void(const std::optional<Identity>&)>;
  /// Finds out whom a caller acts for; answers now or later, with nothing where the bus does not know.
  using Identify = std::function<void(const std::string& caller, Identified)>;

  Callers(Access access, Identify identify, const Log& log);
  Callers(const Callers&) = delete;
  Callers& operator=(const Callers&) = delete;

  /// Before the objects are offered, and before the bus is worked on. Throws CodecError when the bus does not
  /// take it.
  void Attach(sd_bus* bus);

  /// A place for a call that was let through.
  Result<std::shared_ptr<const Place>> Admit(sd_bus_message* call);

 private:
  struct Caller {
    std::optional<Identity> identity;
    std::deque<Wifi::Bus::Message> waiting;  ///< until the identity is known and those before are through
    bool wasDenied = false;
    std::uint64_t lastCall = 0;  ///< counted over the calls of all
  };
  using CallerMap = std::map<std::string, Caller>;

  enum class Verdict { Pass, Done };

  static int OnMessage(sd_bus_message* message, void* self, sd_bus_error* error);
  static int OnNameLost(sd_bus_message* signal, void* self, sd_bus_error* error);

  Verdict Receive(sd_bus_message* call);
  Caller& Find(const std::string& name);
  void MakeRoom();
  Verdict Wait(const std::string& name, Caller& caller, sd_bus_message* call);
  void SetIdentity(const std::string& name, const std::optional<Identity>& identity);
  Verdict Judge(Caller& caller, sd_bus_message* call);
  void Forget(const std::string& name);
  bool BusTakesNothing();

  Access access_;
  Identify identify_;
  const Log& log_;
  CallLimits limits_;
  CallerMap callers_;
  std::size_t waiting_ = 0;  ///< calls of all callers
  std::uint64_t lastCall_ = 0;
  bool passesOver_ = false;
  sd_bus* bus_ = nullptr;
  Wifi::Bus::Slot filter_;
  Wifi::Bus::Slot match_;
};

}  // namespace TALO::Wifid
