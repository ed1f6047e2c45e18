#pragma once

#include "daemon/service/engine.h"
#include "support/captured_stream.h"
#include "support/environment.h"
#include "support/fake_doors.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// An engine over fake doors. Its answers go into the journal too: "answer 1", "done" or the refusal.
class EngineTest : public testing::Test {
 protected:
  EngineTest() { StartWith(MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")})); }

  /// A new engine whose radios are as the state wants them. The journal is empty then.
  void StartWith(const State& state) {
    engine_ = std::make_unique<Engine>(Engine::Doors{store_, driver_, clock_, log_}, state, "br0");
    engine_->Start([](const Result<void>& started) { EXPECT_TRUE(started.Succeeded()); });
    journal_.clear();
  }

  void Create(const std::string& ssid) {
    engine_->CreateNetwork(InfoOf(ssid), [this](const Result<int>& result) {
      journal_.push_back(result.Succeeded() ? "answer " + std::to_string(result.Value())
                                            : Text(result.Why()));
    });
  }
  void Delete(int id) { engine_->DeleteNetwork(id, NoteResult()); }
  void Restart(bool force) { engine_->RestartNetworks(force, NoteResult()); }

  State StateNow() const {
    return engine_->Ask([](const Picture& picture) { return picture.state; });
  }
  std::vector<LiveRadio> LiveNow() const {
    return engine_->Ask([](const Picture& picture) { return picture.live; });
  }

  static std::string Text(const Refusal& why) {
    return make_error_code(why.code).message() + ": " + why.sentence;
  }

  EnvironmentVariable noJournal_{"JOURNAL_STREAM", std::nullopt};
  CapturedStream errors_{std::cerr};
  Journal journal_;
  FakeStore store_{journal_};
  FakeDriver driver_{journal_, TriBandRadios()};
  FakeClock clock_;
  Log log_{Severity::Debug};
  std::unique_ptr<Engine> engine_;

 private:
  Engine::Done<void> NoteResult() {
    return [this](const Result<void>& result) {
      journal_.push_back(result.Succeeded() ? "done" : Text(result.Why()));
    };
  }
};

}  // namespace TALO::Wifid
