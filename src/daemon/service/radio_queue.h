#pragma once

#include "daemon/model/state.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>

namespace TALO::Wifid {

/// Lets requests onto the radios: those that touch a radio in common one after the other, in the order they
/// came; others pass.
class RadioQueue {
 public:
  using Ticket = std::uint64_t;
  using Radios = std::set<RadioFrequency>;
  using Start = std::function<void(Ticket)>;

  /// Calls `start` once no earlier request holds or waits for any of these radios, perhaps at once; they are
  /// held then until Leave(). What `start` throws is passed on, and the radios are free again.
  void Enter(Radios radios, Start start);

  /// Gives the radios of a started request to those that wait. A ticket that has left is ignored.
  void Leave(Ticket ticket);

  /// Calls `action` once, as soon as nobody holds or waits for a radio, perhaps at once.
  void WhenEmpty(std::function<void()> action);

 private:
  struct Entry {
    Radios radios;
    Start start;
    std::size_t waitingIn;  ///< lines in which another stands before it
  };

  void StartWhatCan();
  void TellWhenEmpty();

  std::map<Ticket, Entry> entries_;
  std::map<RadioFrequency, std::deque<Ticket>> lines_;  ///< the front of a line has the radio, or will next
  std::set<Ticket> ready_;                              ///< at the front of all their lines, not started yet
  Ticket lastTicket_ = 0;
  bool starting_ = false;
  std::function<void()> whenEmpty_;
};

}  // namespace TALO::Wifid
