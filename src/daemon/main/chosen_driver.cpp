#include "daemon/main/chosen_driver.h"

#include "daemon/main/given_scenario.h"
#include "daemon/radio/linux/linux_driver.h"
#include "daemon/radio/simulated/simulated_driver.h"
#include "daemon/system/child_processes.h"
#include "daemon/system/linux_kernel.h"
#include "daemon/system/runtime_directory.h"
#include "daemon/system/unix_control_sockets.h"

#include <filesystem>
#include <string>

namespace TALO::Wifid {

namespace {

Severity SeverityOf(DriverNote::Weight weight) {
  switch (weight) {
    case DriverNote::Weight::Detail:
      return Severity::Debug;
    case DriverNote::Weight::Information:
      return Severity::Information;
    case DriverNote::Weight::Warning:
      return Severity::Warning;
    case DriverNote::Weight::Failure:
      break;
  }
  return Severity::Error;
}

/// One of the driver's own in the directory for what runs, which may be shared: it is emptied.
std::string DirectoryIn(const std::string& runtimeDirectory) {
  const std::filesystem::path directory = runtimeDirectory;
  std::filesystem::create_directories(directory);
  return directory / "radios";
}

}  // namespace

struct ChosenDriver::Machine {
  Machine(const Options& options, EventLoop& events, Timers& timers)
      : loop(events.GetWatched()),
        files(DirectoryIn(options.runtimeDirectory)),
        children(loop),
        sockets(loop, timers),
        kernel(loop) {}

  Loop loop;
  RuntimeDirectory files;
  ChildProcesses children;
  UnixControlSockets sockets;
  LinuxKernel kernel;
};

ChosenDriver::ChosenDriver(const Options& options, EventLoop& loop, Timers& timers, const Log& log) {
  if (options.radioDriver == Options::RadioDriver::Simulated) {
    driver_ = std::make_unique<SimulatedDriver>(options.model, GivenScenario(options), timers);
    return;
  }
  machine_ = std::make_unique<Machine>(options, loop, timers);
  driver_ = std::make_unique<LinuxDriver>(
      LinuxSetup{options.model, options.radios, options.bridge, options.hostapd, options.supplicant},
      LinuxDoors{machine_->kernel, machine_->children, machine_->sockets, machine_->files, timers,
                 [&log](const DriverNote& note) { log.Write(SeverityOf(note.weight), note.sentence, {}); }});
}

ChosenDriver::~ChosenDriver() = default;

}  // namespace TALO::Wifid
