#pragma once

#include "support/private_bus.h"
#include "support/process.h"
#include "support/temporary_directory.h"

#include <string>
#include <vector>

namespace TALO::EndToEnd {

/// How the wifi daemon is started.
struct DaemonSetup {
  std::vector<std::string> options = {"--log-level", "Debug"};
  std::string config = {};  ///< text of its configuration file
  Environment environment = {};
};

/// The words that start the daemon: never with the configuration file of the machine.
ProcessSetup DaemonProcess(const PrivateBus& bus, const std::string& configFile, const DaemonSetup& setup);

/// A wifi daemon on a private bus; it has its name there once this is made.
class DaemonOnBus {
 public:
  /// Throws std::runtime_error with the daemon's log when it ends instead.
  DaemonOnBus(PrivateBus& bus, const DaemonSetup& setup);

  /// Ends it as an operator would, returns its exit status, and waits until the bus knows that it is gone.
  int Terminate(int signal);

  Process& GetProcess() { return process_; }
  const Process& GetProcess() const { return process_; }

 private:
  PrivateBus& bus_;
  TemporaryDirectory directory_;
  Process process_;
};

/// Path of the program.
const char* DaemonProgram();

/// What a daemon with two or three radios logs from the moment that they come up until it serves.
std::string LogOfStart(int radios = 3);

}  // namespace TALO::EndToEnd
