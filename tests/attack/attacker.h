#pragma once

#include "bus/message.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace TALO::Attack {

/// A method that is called.
struct Target {
  std::string path;
  std::string interface;
  std::string member;
};

/// What answers were like: the error's name, "result" for none.
using Answers = std::map<std::string, std::size_t>;

/// A connection whose calls must all be answered.
class Attacker {
 public:
  explicit Attacker(const std::string& address);

  using Fill = std::function<void(sd_bus_message* call)>;

  /// Sends a call and does not wait. What cannot be put into a message at all is left out.
  void Send(const Target& target, const Fill& fill);

  /// Waits until every call is answered. Throws std::runtime_error where one is not within a deadline.
  void WaitForAnswers();
  /// Hands all that was sent to the bus.
  void Flush();
  const Answers& Got() const { return answers_; }

  sd_bus* Bus() { return bus_.get(); }

 private:
  static int OnAnswer(sd_bus_message* answer, void* attacker, sd_bus_error* error);

  Wifi::Bus::BusHandle bus_;
  std::size_t awaited_ = 0;
  Answers answers_;
};

}  // namespace TALO::Attack
