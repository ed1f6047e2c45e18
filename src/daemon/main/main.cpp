#include "daemon/main/event_loop.h"
#include "daemon/main/options.h"
#include "daemon/main/system_clock.h"
#include "daemon/model/first_state.h"
#include "daemon/radio/simulated/simulated_driver.h"
#include "daemon/service/engine.h"
#include "daemon/service/service.h"
#include "daemon/store/state_file.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

/// The state of the last run on the radios of this one, or a first one.
State LoadState(StateFile& store, const Capabilities& capabilities, CountryCode country) {
  auto stored = store.Load();
  if (!stored.Succeeded()) {
    throw std::runtime_error(stored.Why().sentence);
  }
  if (!stored.Value()) {
    return MakeFirstState(capabilities, country);
  }
  return AdaptToRadios(std::move(*stored.Value()), capabilities);
}

void Serve(const Options& options) {
  Log log(*SeverityOf(options.logLevel));
  StateFile store(options.stateDirectory);
  SimulatedDriver driver(options.model);
  const SystemClock clock;
  Engine engine({store, driver, clock, log}, LoadState(store, driver.GetCapabilities(), options.country),
                options.bridge);
  Service service(engine, log);
  EventLoop loop(options.bus, log);

  service.Attach(loop.GetBus());
  engine.Start([&log](const Result<void>& started) {
    if (!started.Succeeded()) {
      log.Write(Severity::Error, "the radios are not as they were left: " + started.Why().sentence);
    }
  });
  // Last, so that whoever finds the name finds everything behind it.
  loop.RequestName();
  loop.Run();
}

}  // namespace

}  // namespace TALO::Wifid

int main(int argc, char** argv) {
  try {
    if (const auto options = TALO::Wifid::ParseOptions(argc, argv)) {
      TALO::Wifid::Serve(*options);
    }
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    std::cerr << "talowifid: " << failure.what() << std::endl;
    return EXIT_FAILURE;
  }
}
