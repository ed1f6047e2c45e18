// What every driver owes its callers, held against the driver for real radios.

#include "daemon/main/chosen_driver.h"
#include "daemon/main/event_timers.h"
#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/programs.h"
#include "hwsim/support/waiting.h"
#include "support/deadline.h"
#include "unit/daemon/radio/driver_conformance_test.h"

#include <systemd/sd-event.h>

#include <chrono>
#include <cstdint>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

using std::chrono::microseconds;

/// The driver as the daemon has it on this machine, a phone and a neighbour.
class RealRouter final : public DriverUnderTest {
 public:
  RealRouter() : phone_("phone", 2) {
    phone_.BeginToJoin({.ssid = "Network 4"});
    // The lowest channel of each band.
    phone_.Control().Do("SET_NETWORK 0 scan_freq 2412 5180");
  }

  RadioDriver& Driver() override { return chosen_.Get(); }

  bool WaitUntil(const std::function<bool()>& condition) override {
    constexpr auto kLookAgain = std::chrono::milliseconds(50);
    const EndToEnd::Deadline deadline(Hwsim::kPatience);
    while (!condition()) {
      if (deadline.HasPassed()) {
        return false;
      }
      Turn(kLookAgain);
    }
    return true;
  }

  /// What follows at once follows within the driver's loop; programs and kernel have answered before.
  void Settle() override {
    constexpr auto kQuiet = std::chrono::milliseconds(100);
    const EndToEnd::Deadline deadline(Hwsim::kPatience);
    while (!deadline.HasPassed() && Turn(kQuiet)) {
    }
  }

 private:
  static Options MakeOptions(const std::string& runtimeDirectory) {
    Options options;
    options.radioDriver = Options::RadioDriver::Linux;
    options.model = SupportedModel::Dune40;
    options.runtimeDirectory = runtimeDirectory;
    return options;
  }

  /// False when nothing happened for so long. Throws what an action threw.
  bool Turn(microseconds patience) {
    const int turned = sd_event_run(loop_.GetEvent(), static_cast<std::uint64_t>(patience.count()));
    if (turned < 0) {
      loop_.Run();
      throw std::runtime_error("the event loop has come to its end");
    }
    return turned > 0;
  }

  /// The bridge is to be there before the driver. Outside the machine this is the host, which stays as it is.
  struct Surroundings {
    Surroundings() {
      Hwsim::LogFile("");
      Hwsim::NetworkNamespace().MakeBridge("br0");
    }
  };

  Surroundings surroundings_;
  TemporaryDirectory directory_;
  Hwsim::Client phone_;
  Hwsim::NetworkNamespace neighbour_{"neighbour"};
  Hwsim::ForeignAP miller_{
      neighbour_, neighbour_.TakeRadio(3), {.ssid = "Miller", .passphrase = "millers-secret", .channel = 1}};
  Log log_{Severity::Debug};
  EventLoop loop_{Options::Bus::System, log_};
  EventTimers timers_{loop_};
  ChosenDriver chosen_{MakeOptions(directory_ / "run"), loop_, timers_, log_};
};

INSTANTIATE_TEST_SUITE_P(Hwsim, DriverConformanceTest,
                         testing::Values(DriverFactory{"Dune40",
                                                       [] { return std::make_unique<RealRouter>(); }}),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace

}  // namespace TALO::Wifid
