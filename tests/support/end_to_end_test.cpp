#include "support/end_to_end_test.h"

#include <csignal>
#include <iostream>

namespace TALO::EndToEnd {

void PrintTo(const ToolRun& run, std::ostream* out) {
  *out << "status " << run.status << ", output:\n" << run.output << "(end)";
  if (!run.errors.empty()) {
    *out << ", errors:\n" << run.errors << "(end)";
  }
}

ToolRun Success(const std::string& output) { return {0, output, ""}; }

ToolRun Failure(const std::string& output) { return {1, output, ""}; }

ToolRun Refusal(const std::string& sentence) {
  return Failure("Failed to execute command: " + sentence + "\n");
}

ToolRun Finish(Process& process) {
  const int status = process.Wait();
  return {status, process.Output(), process.Errors()};
}

ProcessSetup ToolProcess(const std::string& busAddress, const Words& words) {
  ProcessSetup setup{.words = {TALOWIFITOOL}, .environment = {{"DBUS_SYSTEM_BUS_ADDRESS", busAddress}}};
  setup.words.insert(setup.words.end(), words.begin(), words.end());
  return setup;
}

void EndToEndTest::TearDown() {
  if (HasFailure() && daemon_) {
    std::cerr << "The daemon's log:\n" << daemon_->GetProcess().Errors() << "(end)\n";
  }
}

void EndToEndTest::StartBus(const BusSetup& setup) { bus_ = std::make_unique<PrivateBus>(setup); }

PrivateBus& EndToEndTest::Bus() {
  if (!bus_) {
    StartBus({});
  }
  return *bus_;
}

void EndToEndTest::StartDaemon(const DaemonSetup& setup) {
  DaemonSetup withState = setup;
  withState.options.insert(withState.options.end(), {"--state-dir", StateDirectory()});
  daemon_.reset();
  daemon_ = std::make_unique<DaemonOnBus>(Bus(), withState);
}

void EndToEndTest::RestartDaemon(const DaemonSetup& setup) {
  EXPECT_EQ(daemon_->Terminate(SIGTERM), 0);
  StartDaemon(setup);
}

ToolRun EndToEndTest::RunTool(const Words& words) {
  Process tool(ToolProcess(Address(), words));
  return Finish(tool);
}

void EndToEndTest::CreateNetwork(const std::string& ssid, int id, const std::string& password) {
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", ssid, "--password", password}),
            Success("Create Network ID: " + std::to_string(id) + "\n"));
}

}  // namespace TALO::EndToEnd
