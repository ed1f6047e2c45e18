// The driver for real radios, while hostapd and wpa_supplicant say, print and answer anything, hang and end:
// whatever it is asked is answered, and once they are themselves again every plan is reached.

#include "fuzz/support/require.h"
#include "support/machine/linux_router.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

using Wifid::ErrorCode;
using Wifid::FakeProgram;

class Trial {
 public:
  explicit Trial(FuzzedDataProvider& data) : data_(data) {}

  void Step() {
    FakeProgram& program = AnyProgram();
    switch (data_.ConsumeIntegralInRange(0, 9)) {
      case 0:
      case 1:
        Apply(data_.ConsumeIntegralInRange<std::size_t>(0, 1), AnyNetworks());
        break;
      case 2:
      case 3:
        program.Tell(Text());
        break;
      case 4:
        AnswerOddly(program);
        break;
      case 5:
        program.Print(Text());
        break;
      case 6:
        Kill(program);
        break;
      case 7:
        Hang(program, std::chrono::milliseconds(data_.ConsumeIntegralInRange(0, 30'000)));
        break;
      case 8:
        Scan();
        break;
      default:
        router_.machine.Advance(data_.ConsumeIntegralInRange(0, 60'000));
        break;
    }
    Look();
  }

  /// With programs that do what they are told.
  void End() {
    for (FakeProgram* program : {static_cast<FakeProgram*>(&router_.machine.hostapd),
                                 static_cast<FakeProgram*>(&router_.machine.supplicant)}) {
      program->oddAnswers.clear();
      program->diesOf.clear();
      program->hangs = false;
    }
    constexpr int kTwoMinutes = 120'000;
    router_.machine.Advance(kTwoMinutes);
    for (const std::size_t radio : {0U, 1U}) {
      const auto applied = router_.Apply(Plan(radio, {1}));
      Require(applied.Succeeded(), "a plan is reached: " + Wifid::Describe(applied));
      const std::string own = "wlan" + std::to_string(radio);
      Require(router_.machine.hostapd.GetBSSs("phy" + std::to_string(radio)) ==
                  std::vector<std::string>{own, own + "_1"},
              "what is planned is in the air, and nothing else");
      const Wifid::LiveRadio live = router_.Live(radio);
      Require(live.up && live.bsss.size() == 1 && live.bsss.front().up, "what is in the air is shown");
    }
    Require(router_.WaitFor(
                [this] { return router_.machine.supplicant.HasInterface("wlan0sta") == withStation_; }),
            "a station is there if it is planned");
    Require((router_.Live(0).station.phase != Wifid::LiveUpstream::Phase::Disabled) == withStation_,
            "a station is shown if it is planned");
  }

 private:
  FakeProgram& AnyProgram() {
    if (data_.ConsumeBool()) {
      return router_.machine.hostapd;
    }
    return router_.machine.supplicant;
  }
  std::string Text() { return data_.ConsumeRandomLengthString(300); }
  std::vector<int> AnyNetworks() {
    std::vector<int> networks;
    for (const int network : {1, 2, 3}) {
      if (data_.ConsumeBool()) {
        networks.push_back(network);
      }
    }
    return networks;
  }

  Wifid::RadioPlan Plan(std::size_t radio, const std::vector<int>& networks) const {
    Wifid::RadioPlan plan = router_.Plan(radio, networks);
    if (radio == 0 && withStation_) {
      plan.station = Wifid::LinuxRouter::Station("Uplink", "uplink-password");
    }
    return plan;
  }

  void Apply(std::size_t radio, const std::vector<int>& networks) {
    withStation_ = data_.ConsumeBool();
    const auto mode = data_.ConsumeBool() ? Wifid::ApplyMode::WhatDiffers : Wifid::ApplyMode::Everything;
    const auto applied = router_.Apply(Plan(radio, networks), mode);
    Require(applied.Succeeded() || applied.Why().code != ErrorCode::NoAnswer, "a plan is answered");
  }

  void Scan() {
    const auto heard = router_.Scan(data_.ConsumeIntegralInRange<std::size_t>(0, 1));
    Require(heard.Succeeded() || heard.Why().code != ErrorCode::NoAnswer, "a scan is answered");
  }

  /// One that it had before.
  const std::string& AnyRequest(const FakeProgram& program) {
    return program.requests.at(data_.ConsumeIntegralInRange<std::size_t>(0, program.requests.size() - 1));
  }

  void AnswerOddly(FakeProgram& program) {
    if (!program.requests.empty()) {
      const std::string& request = AnyRequest(program);
      program.oddAnswers[request] = Text();
    }
  }

  /// At once, or in the middle of what asks it so the next time.
  void Kill(FakeProgram& program) {
    if (!program.requests.empty() && data_.ConsumeBool()) {
      program.diesOf = AnyRequest(program);
    } else if (program.IsRunning()) {
      program.Die("killed by signal 9");
    }
  }

  /// For so long, whatever comes meanwhile.
  void Hang(FakeProgram& program, std::chrono::milliseconds time) {
    program.hangs = true;
    router_.machine.timers.After(time, [&program] { program.hangs = false; });
  }

  void Look() {
    for (const Wifid::LiveRadio& radio : router_.driver->GetLive()) {
      Require(radio.utilisation >= 0 && radio.utilisation <= 100, "a channel is busy at most all the time");
      Require(radio.up || radio.bsss.empty(), "a radio that is down has no BSS");
    }
    for (const std::string& event : router_.TakeEvents()) {
      Require(!event.empty(), "an event is one");
    }
  }

  FuzzedDataProvider& data_;
  Wifid::LinuxRouter router_;
  bool withStation_ = false;
};

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  TALO::Fuzz::Trial trial(data);
  constexpr int kMostSteps = 40;
  for (int step = 0; step < kMostSteps && data.remaining_bytes() > 0; ++step) {
    trial.Step();
  }
  trial.End();
  return 0;
}
