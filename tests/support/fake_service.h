#pragma once

#include "support/process.h"
#include "support/test_connection.h"

#include <functional>
#include <string>

namespace TALO::EndToEnd {

/// A service that has the daemon's name and answers what a test wants.
class FakeService {
 public:
  enum class Then { ServeOn, Vanish };

  /// Given each call; answers it or not, and says whether to leave the bus then.
  using Answer = std::function<Then(sd_bus_message* call)>;

  /// Has the name once this is made.
  FakeService(const std::string& address, Answer answer);

  /// Answers calls until the process has ended.
  void ServeUntilEndOf(const Process& process);

 private:
  Wifi::Bus::BusHandle bus_;
  Answer answer_;
};

/// Whether a call asks for the log level.
bool AsksForLogLevel(sd_bus_message* call);

/// Answers a call that asks for the log level.
void AnswerLogLevel(sd_bus_message* call, const char* level);

/// Answers a call with an error.
void AnswerError(sd_bus_message* call, const char* name, const char* message);

}  // namespace TALO::EndToEnd
