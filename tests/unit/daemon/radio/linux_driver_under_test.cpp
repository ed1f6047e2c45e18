#include "support/machine/fake_machine.h"
#include "unit/daemon/radio/driver_conformance_test.h"

namespace TALO::Wifid {

namespace {

class LinuxDriverUnderTest final : public DriverUnderTest {
 public:
  LinuxDriverUnderTest(SupportedModel model, const std::vector<Wiphy>& wiphys)
      : machine_(wiphys), driver_(LinuxSetup{.model = model}, machine_.Doors()) {
    machine_.kernel.hasRadars = false;
    for (const int frequency : {2412, 5220, 5540}) {
      const std::string number = std::to_string(machine_.supplicant.air.size());
      machine_.supplicant.air.push_back(
          {"Miller", Wifi::Util::MACAddress("06:00:00:00:01:0" + number), frequency, -60, "millers-secret"});
    }
    FakeDevice device;
    device.address = Wifi::Util::MACAddress("0a:00:00:00:00:01");
    device.knows = {{"Network 4", "correct-horse"}};
    machine_.hostapd.devices.push_back(std::make_unique<FakeDevice>(device));
  }

  RadioDriver& Driver() override { return driver_; }
  bool WaitUntil(const std::function<bool()>& condition) override { return machine_.WaitUntil(condition); }
  void Settle() override { machine_.Advance(5000); }

 private:
  FakeMachine machine_;
  LinuxDriver driver_;
};

/// On hardware that no radar keeps off a channel, so that every radio has channels that need no listening.
DriverFactory LinuxModel(const std::string& name, SupportedModel model, const std::vector<Wiphy>& wiphys) {
  return {name, [model, wiphys] { return std::make_unique<LinuxDriverUnderTest>(model, wiphys); }};
}

INSTANTIATE_TEST_SUITE_P(Linux, DriverConformanceTest,
                         testing::Values(LinuxModel("TriBand", SupportedModel::Alder100,
                                                    {MakeWiphy(0), MakeWiphy(1), MakeWiphy(2)}),
                                         LinuxModel("DualBand", SupportedModel::Dune40,
                                                    {MakeWiphy(0), MakeWiphy(1)})),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace

}  // namespace TALO::Wifid
