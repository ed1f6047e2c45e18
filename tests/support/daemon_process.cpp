#include "support/daemon_process.h"

#include "support/files.h"
#include "support/test_connection.h"

namespace TALO::EndToEnd {

const char* DaemonProgram() { return TALOWIFID; }

ProcessSetup DaemonProcess(const PrivateBus& bus, const std::string& configFile, const DaemonSetup& setup) {
  // Not every machine has the group that is let in by default, and a missing one is logged.
  WriteFile(configFile, "access-group = root\n" + setup.config);
  ProcessSetup process{.words = {DaemonProgram(), "--config", configFile}, .environment = setup.environment};
  process.words.insert(process.words.end(), setup.options.begin(), setup.options.end());
  process.environment.emplace("DBUS_SYSTEM_BUS_ADDRESS", bus.Address());
  return process;
}

DaemonOnBus::DaemonOnBus(PrivateBus& bus, const DaemonSetup& setup)
    : bus_(bus), process_(DaemonProcess(bus, directory_ / "talowifid.conf", setup)) {
  TestConnection connection(bus.Address());
  connection.WaitForOwner(process_);
  try {
    // It learns that it has the name before it answers.
    connection.GetLogLevel();
  } catch (const CallError&) {
    // The bus lets nobody ask it.
  }
}

int DaemonOnBus::Terminate(int signal) {
  process_.SendSignal(signal);
  const int status = process_.Wait();
  TestConnection(bus_.Address()).WaitForNoOwner();
  return status;
}

std::string LogOfStart(int radios) {
  return std::string("info: Band2_4GHz is up\n") +
         (radios == 2 ? "info: Band5GHz is up\n" : "info: Band5GHz_1 is up\ninfo: Band5GHz_2 is up\n") +
         "info: talowifid serves com.talo.Wifi1\n";
}

}  // namespace TALO::EndToEnd
