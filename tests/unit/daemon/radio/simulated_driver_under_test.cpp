#include "daemon/radio/simulated/simulated_driver.h"
#include "support/manual_timers.h"
#include "unit/daemon/radio/driver_conformance_test.h"

namespace TALO::Wifid {

namespace {

class SimulatedDriverUnderTest final : public DriverUnderTest {
 public:
  explicit SimulatedDriverUnderTest(SupportedModel model) : driver_(model, World(), timers_) {}

  RadioDriver& Driver() override { return driver_; }

  bool WaitUntil(const std::function<bool()>& condition) override {
    while (!condition()) {
      if (!timers_.RunNext()) {
        return false;
      }
    }
    return true;
  }

  void Settle() override { timers_.Advance(std::chrono::seconds(5)); }

 private:
  static Scenario World() {
    Scenario scenario;
    for (const int channel : {1, 44, 108}) {
      AccessPoint neighbour;
      neighbour.ssid = "Miller";
      neighbour.bssid = Wifi::Util::MACAddress("06:00:00:00:01:" + std::to_string(10 + channel % 80));
      neighbour.channel = channel;
      neighbour.passphrase = "millers-secret";
      scenario.neighbours.push_back(neighbour);
    }
    Device device;
    device.address = Wifi::Util::MACAddress("0a:00:00:00:00:01");
    device.knows = {{"Network 4", "correct-horse"}};
    scenario.devices = {device};
    return scenario;
  }

  ManualTimers timers_;
  SimulatedDriver driver_;
};

DriverFactory SimulatedModel(const std::string& name, SupportedModel model) {
  return {name, [model] { return std::make_unique<SimulatedDriverUnderTest>(model); }};
}

INSTANTIATE_TEST_SUITE_P(Simulated, DriverConformanceTest,
                         testing::Values(SimulatedModel("TriBand", SupportedModel::Alder100),
                                         SimulatedModel("DualBand", SupportedModel::Dune40)),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace

}  // namespace TALO::Wifid
