#pragma once

#include "support/end_to_end_test.h"
#include "support/operation_call.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace TALO::EndToEnd {

/// What the tool prints of records: a text with two blanks for each indentation and no blanks at line ends,
/// which begins with a line end, gets the tool's tabs and blanks, and an empty line behind.
std::string Printed(const std::string& text);

/// Puts TIME in place of each number behind "connectedTime" and each age.
std::string WithoutSeconds(const std::string& output);

/// Notes the daemon's signals from now on, each as in "StationConnected 0a:00:00:00:00:01 1 wlan0_1".
class SignalLog {
 public:
  explicit SignalLog(const std::string& busAddress);

  /// Waits for a signal behind those that were waited for before.
  void WaitFor(const std::string& signal);
  /// What the daemon sent up to now, of those signals that begin like this.
  std::vector<std::string> Get(const std::string& beginning = "");

 private:
  static int OnSignal(sd_bus_message* signal, void* log, sd_bus_error* error);

  Wifi::Bus::BusHandle bus_;
  Wifi::Bus::Slot match_;
  std::vector<std::string> signals_;
  std::size_t waitedFor_ = 0;  ///< so many lie behind
};

/// A daemon at debug level whose radios live in a scenario where nothing takes long.
class StoryTest : public EndToEndTest {
 protected:
  /// Starts it with the members of a scenario, beside "timings", and with more options. `timings` are those
  /// that do take long, as in `"scanMilliseconds": 60000`.
  void StartStory(const std::string& members,
                  const std::vector<std::string>& options = {"--model", "Cedar300"},
                  const std::string& timings = "");

  /// Ends the daemon and puts the second of each pair of texts in place of the first in what it stored.
  void EditState(const std::vector<std::pair<std::string, std::string>>& replacements);

  /// Runs the tool again and again until `holds` accepts what it prints, and returns the last run, which it
  /// does not accept once the deadline has passed.
  ToolRun RunToolUntil(const Words& words, const std::function<bool(const std::string& output)>& holds);
  /// Expects that the tool prints this in the end, with TIME in place of seconds.
  void ExpectInTheEnd(const Words& words, const std::string& output);
  /// Expects that it prints this now.
  void ExpectNow(const Words& words, const std::string& output);

  /// Calls an operation that no command reaches. Throws CallError when it is refused.
  template <auto Method, typename... Arguments>
  auto Call(const Arguments&... arguments) {
    return CallOperation<Method>(Address(), arguments...);
  }

  /// Expects that an operation is refused with an error of this name behind the prefix of all.
  template <auto Method, typename... Arguments>
  void ExpectCallRefused(const std::string& name, const std::string& sentence,
                         const Arguments&... arguments) {
    try {
      Call<Method>(arguments...);
      ADD_FAILURE() << "not refused: " << sentence;
    } catch (const CallError& error) {
      EXPECT_EQ(error.Name(), Wifi::Bus::kErrorPrefix + name);
      EXPECT_EQ(error.Message(), sentence);
    }
  }
};

}  // namespace TALO::EndToEnd
