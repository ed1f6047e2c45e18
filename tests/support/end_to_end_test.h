#pragma once

#include "support/daemon_process.h"
#include "support/private_bus.h"
#include "support/process.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace TALO::EndToEnd {

using Words = std::vector<std::string>;

/// A command of each kind that asks the bus: one that runs at any log level, one that only runs at debug
/// level and so asks for the level before, and the listing, which asks for the level but works without.
inline const Words kPlain = {"getNetworks"};
inline const Words kDebugOnly = {"deleteNetwork", "--id", "1"};
inline const Words kHelp = {"help"};

/// How a run of a program ended and what it wrote.
struct ToolRun {
  int status = -1;
  std::string output;
  std::string errors;

  bool operator==(const ToolRun&) const = default;
};

void PrintTo(const ToolRun& run, std::ostream* out);

/// Runs that end with status 0 or 1 and leave standard error empty.
ToolRun Success(const std::string& output = "");
ToolRun Failure(const std::string& output);

/// The daemon's refusal, as the tool prints it: `sentence` with the text of its category behind.
ToolRun Refusal(const std::string& sentence);

/// Waits for a process whose output is captured.
ToolRun Finish(Process& process);

/// A run of the tool that is not yet started.
ProcessSetup ToolProcess(const std::string& busAddress, const Words& words);

/// The real tool, a bus of its own and, where asked for, the real daemon with a state of its own. Prints the
/// daemon's log when a case fails.
class EndToEndTest : public testing::Test {
 protected:
  EndToEndTest() = default;
  void TearDown() override;

  /// Starts a bus in place of the one before; any other member that needs one starts an open one.
  void StartBus(const BusSetup& setup);
  PrivateBus& Bus();
  const std::string& Address() { return Bus().Address(); }

  /// Starts a daemon in place of the one before, on the state that it left. It logs at debug level where the
  /// setup does not say otherwise.
  void StartDaemon(const DaemonSetup& setup = {});
  DaemonOnBus& Daemon() { return *daemon_; }
  /// Ends it and starts it again on what it stored.
  void RestartDaemon(const DaemonSetup& setup = {});

  /// Runs the tool to its end.
  ToolRun RunTool(const Words& words);
  /// Runs it and expects it to print nothing and succeed.
  void Do(const Words& words) { EXPECT_EQ(RunTool(words), Success()) << words.at(0); }
  /// Makes a network, which must get this ID.
  void CreateNetwork(const std::string& ssid, int id, const std::string& password = "correct-horse");

  std::string StateDirectory() const { return directory_ / "state"; }
  std::string StateFile() const { return StateDirectory() + "/state.json"; }
  std::string Path(const std::string& name) const { return directory_ / name; }

 private:
  TemporaryDirectory directory_;
  std::unique_ptr<PrivateBus> bus_;
  std::unique_ptr<DaemonOnBus> daemon_;
};

}  // namespace TALO::EndToEnd
