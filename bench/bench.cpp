#include "bench/bench.h"

#include "support/test_connection.h"

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace TALO::Bench {

const Programs& BuiltPrograms() {
  static const Programs programs = {TALOWIFITOOL, BENCH_C_CLIENT, BENCH_MEASURED_RUN, BENCH_NULL_SERVICE,
                                    BENCH_LISTING_SERVICE};
  return programs;
}

Bus::Bus() { setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.Address().c_str(), 1); }

namespace {

EndToEnd::DaemonSetup SetupOn(const std::string& state, std::vector<std::string> options) {
  options.insert(options.end(), {"--state-dir", state});
  return {.options = std::move(options)};
}

}  // namespace

Router::Router(const std::vector<std::string>& options)
    : daemon_(bus_.Private(), SetupOn(state_ / "state", options)) {}

std::unique_ptr<EndToEnd::Process> StartService(const EndToEnd::ProcessSetup& setup,
                                                const std::string& name) {
  EndToEnd::ProcessSetup started = setup;
  started.environment.emplace("DBUS_SYSTEM_BUS_ADDRESS", std::getenv("DBUS_SYSTEM_BUS_ADDRESS"));
  auto process = std::make_unique<EndToEnd::Process>(started);
  const Wifi::Bus::BusHandle bus = EndToEnd::OpenBus(std::getenv("DBUS_SYSTEM_BUS_ADDRESS"));
  while (sd_bus_get_name_creds(bus.get(), name.c_str(), 0, nullptr) < 0) {
    if (process->HasEnded()) {
      throw std::runtime_error(setup.words.front() + " ends: " + process->Errors());
    }
  }
  return process;
}

}  // namespace TALO::Bench
