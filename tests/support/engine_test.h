#pragma once

#include "daemon/model/networks.h"
#include "daemon/model/stations.h"
#include "daemon/service/engine.h"
#include "support/captured_stream.h"
#include "support/environment.h"
#include "support/fake_doors.h"
#include "support/fake_driver.h"
#include "support/zone_calendar.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifid {

using enum RadioFrequency;

/// Journals one behind the other.
template <typename... More>
Journal Join(Journal first, const More&... more) {
  (first.insert(first.end(), more.begin(), more.end()), ...);
  return first;
}

/// What is noted when every radio is brought to a plan with these networks.
inline Journal AppliedOnAll(const std::string& networks, const std::string& how = "apply") {
  return {how + " Band2_4GHz: " + networks, how + " Band5GHz_1: " + networks,
          how + " Band5GHz_2: " + networks};
}

/// An engine over fake doors. Its answers go into the journal too: "answer 1", "done" or the refusal.
class EngineTest : public testing::Test {
 protected:
  EngineTest() { StartWith(two_); }

  /// A new engine whose radios are as the state wants them. The journal is empty then.
  void StartWith(const State& state) {
    MakeEngine(state);
    engine_->Start([] {});
    driver_.FinishAll();
    journal_.clear();
  }

  void MakeEngine(const State& state) {
    engine_ =
        std::make_unique<Engine>(Engine::Doors{store_, driver_, clock_, calendar_, announcer_, log_}, state);
  }

  void Create(const std::string& ssid) {
    engine_->Make<int>(
        [ssid](const State& state) {
          return CreateNetwork(state, TriBandRadios(), InfoOf(ssid), "br0", 1000);
        },
        [this](const Result<int>& result) {
          journal_.push_back(result.Succeeded() ? "answer " + std::to_string(result.Value())
                                                : Text(result.Why()));
        });
  }
  void Delete(int id) {
    engine_->Make<void>([id](const State& state) { return DeleteNetwork(state, id); }, NoteResult());
  }
  /// A change of one radio: its station joins an open access point.
  void JoinUpstream(RadioFrequency radio, const std::string& essid) {
    engine_->Make<void>(
        Engine::Radios{radio},
        [setting = Joined(radio, essid)](const State& state) {
          return ModifyStation(state, TriBandRadios(), setting);
        },
        NoteResult());
  }
  void Restart(ApplyMode mode) { engine_->Restart(mode, NoteResult()); }

  static Wifi::StationSetting Joined(RadioFrequency radio, const std::string& essid) {
    Wifi::StationSetting setting;
    setting.enable = true;
    setting.essid = essid;
    setting.securityMode = SecurityMode::Disabled;
    setting.radio = radio;
    return setting;
  }
  /// The state with a station that joins.
  static State WithJoined(State state, RadioFrequency radio, const std::string& essid) {
    for (Wifi::StationSetting& station : state.stations) {
      if (station.radio == radio) {
        station = Joined(radio, essid);
      }
    }
    return state;
  }

  /// The journal since it was asked for last.
  Journal TakeJournal() { return std::exchange(journal_, {}); }

  std::vector<LiveRadio> LiveNow() const {
    return engine_->Ask([](const Picture& picture) { return picture.live; });
  }
  static std::vector<LiveRadio> LiveOf(const State& state) {
    return LiveAsPlanned(MakePlan(state, TriBandRadios(), {}));
  }

  static std::string Text(const Refusal& why) {
    return make_error_code(why.code).message() + ": " + why.sentence;
  }
  Engine::Done<void> NoteResult(const std::string& success = "done") {
    return [this, success](const Result<void>& result) {
      journal_.push_back(result.Succeeded() ? success : Text(result.Why()));
    };
  }

  const State two_ = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const State three_ =
      MakeState(4, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Three")});

  EnvironmentVariable noJournal_{"JOURNAL_STREAM", std::nullopt};
  CapturedStream errors_{std::cerr};
  Journal journal_;
  FakeStore store_{journal_};
  FakeDriver driver_{journal_, TriBandRadios()};
  FakeClock clock_;
  ZoneCalendar calendar_ = Greenwich();
  FakeAnnouncer announcer_{journal_};
  Log log_{Severity::Debug};
  std::unique_ptr<Engine> engine_;
};

}  // namespace TALO::Wifid
