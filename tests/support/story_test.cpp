#include "support/story_test.h"

#include "support/files.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <regex>
#include <sstream>

namespace TALO::EndToEnd {

namespace {

/// The values of a signal, each with a blank in front. All signals have MAC addresses as texts.
std::string ValuesOf(sd_bus_message* signal) {
  std::string text;
  char type = 0;
  const char* contents = nullptr;
  while (sd_bus_message_peek_type(signal, &type, &contents) > 0) {
    if (type == SD_BUS_TYPE_STRING) {
      const char* value = nullptr;
      Wifi::Bus::CheckMessage(sd_bus_message_read_basic(signal, type, &value));
      text += std::string(" ") + value;
    } else {
      int value = 0;
      Wifi::Bus::CheckMessage(sd_bus_message_read_basic(signal, type, &value));
      text += " " + std::to_string(value);
    }
  }
  return text;
}

}  // namespace

std::string Printed(const std::string& text) {
  std::istringstream lines(text.substr(1));
  std::string printed;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blanks = line.find_first_not_of(' ');
    printed += std::string(blanks / 2, '\t') + line.substr(blanks) + (line.ends_with(" :") ? " \n" : "\n");
  }
  return printed + "\n";
}

std::string WithoutSeconds(const std::string& output) {
  static const std::regex kSeconds("(\"(connectedTime|age)\" : )[0-9]+");
  return std::regex_replace(output, kSeconds, "$1TIME");
}

SignalLog::SignalLog(const std::string& busAddress) : bus_(OpenBus(busAddress)) {
  sd_bus_slot* slot = nullptr;
  Wifi::Bus::CheckMessage(sd_bus_match_signal(bus_.get(), &slot, Wifi::Bus::kBusName, Wifi::Bus::kObjectPath,
                                              nullptr, nullptr, OnSignal, this));
  match_.reset(slot);
}

int SignalLog::OnSignal(sd_bus_message* signal, void* log, sd_bus_error*) {
  static_cast<SignalLog*>(log)->signals_.push_back(sd_bus_message_get_member(signal) + ValuesOf(signal));
  return 0;
}

void SignalLog::WaitFor(const std::string& signal) {
  ProcessBusUntil(bus_.get(), -1, "the signal " + signal, [&] {
    const auto from = signals_.begin() + static_cast<std::ptrdiff_t>(waitedFor_);
    const auto found = std::find(from, signals_.end(), signal);
    if (found == signals_.end()) {
      return false;
    }
    waitedFor_ = static_cast<std::size_t>(found - signals_.begin()) + 1;
    return true;
  });
}

// The daemon's answer comes behind all that it sent before.
std::vector<std::string> SignalLog::Get(const std::string& beginning) {
  Wifi::Bus::BusError error;
  Wifi::Bus::CheckMessage(sd_bus_call_method(bus_.get(), Wifi::Bus::kBusName, Wifi::Bus::kObjectPath,
                                             "org.freedesktop.DBus.Peer", "Ping", error.Get(), nullptr, ""));
  while (Wifi::Bus::CheckMessage(sd_bus_process(bus_.get(), nullptr)) > 0) {
  }
  std::vector<std::string> found;
  std::copy_if(signals_.begin(), signals_.end(), std::back_inserter(found),
               [&](const std::string& signal) { return signal.starts_with(beginning); });
  return found;
}

void StoryTest::StartStory(const std::string& members, const std::vector<std::string>& options,
                           const std::string& timings) {
  std::string all = timings;
  for (const std::string name :
       {"applyMilliseconds", "bssMilliseconds", "joinMilliseconds", "scanMilliseconds"}) {
    if (timings.find(name) == std::string::npos) {
      all += (all.empty() ? "\"" : ", \"") + name + "\": 5";
    }
  }
  const std::string file = Path("scenario.json");
  WriteFile(file, "{" + members + (members.empty() ? "" : ",") + "\"timings\": {" + all + "}}");
  DaemonSetup setup;
  setup.options.insert(setup.options.end(), {"--scenario", file});
  setup.options.insert(setup.options.end(), options.begin(), options.end());
  StartDaemon(setup);
}

void StoryTest::EditState(const std::vector<std::pair<std::string, std::string>>& replacements) {
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  std::string state = ReadFile(StateFile());
  for (const auto& [from, to] : replacements) {
    const std::size_t at = state.find(from);
    ASSERT_NE(at, std::string::npos) << from << " in " << state;
    state.replace(at, from.size(), to);
  }
  // Who edits the file takes its checksum out.
  const std::size_t checksum = state.find("\t\"checksum\"");
  ASSERT_NE(checksum, std::string::npos) << state;
  state.erase(checksum, state.find('\n', checksum) + 1 - checksum);
  WriteFile(StateFile(), state);
}

ToolRun StoryTest::RunToolUntil(const Words& words,
                                const std::function<bool(const std::string& output)>& holds) {
  const Deadline deadline;
  for (;;) {
    ToolRun run = RunTool(words);
    if (holds(run.output) || deadline.HasPassed()) {
      return run;
    }
  }
}

void StoryTest::ExpectInTheEnd(const Words& words, const std::string& output) {
  ToolRun run = RunToolUntil(words, [&](const std::string& now) { return WithoutSeconds(now) == output; });
  run.output = WithoutSeconds(run.output);
  EXPECT_EQ(run, Success(output)) << words.at(0);
}

void StoryTest::ExpectNow(const Words& words, const std::string& output) {
  ToolRun run = RunTool(words);
  run.output = WithoutSeconds(run.output);
  EXPECT_EQ(run, Success(output)) << words.at(0);
}

}  // namespace TALO::EndToEnd
