#include "daemon/service/wps_sessions.h"

#include "daemon/model/mesh.h"
#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

using Wifi::NetworkRadioPair;

class WPSSessionsTest : public EngineTest {
 protected:
  WPSSessionsTest() {
    driver_.SetEventSink([this](const RadioEvent& event) { wps_.Finished(std::get<WPSFinished>(event)); });
  }

  void Open(int networkId, RadioFrequency radio) { wps_.Open({networkId, radio}, NoteResult("open")); }
  void End(const std::string& interface) { wps_.End(interface, NoteResult("ended")); }
  void TellEnd(const std::string& interface) {
    driver_.Tell(WPSFinished{interface, WPSFinished::Outcome::TimedOut});
  }
  /// Opens a session and has the driver be done with it.
  void HaveOne(int networkId, RadioFrequency radio) {
    Open(networkId, radio);
    driver_.FinishAll();
    TakeJournal();
  }

  /// "yes", "no" or the refusal, for a network on 2.4 GHz.
  std::string Available(int networkId) const {
    const auto available = wps_.IsAvailable({networkId, Band2_4GHz});
    return !available.Succeeded() ? Text(available.Why()) : available.Value() ? "yes" : "no";
  }

  WPSSessions wps_{*engine_};
};

TEST_F(WPSSessionsTest, OpenWhereTheyAreAsked) {
  Open(2, Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan1_2"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"open"}));
}

TEST_F(WPSSessionsTest, RefuseASecondWhileOneRunsOrIsBeingOpened) {
  Open(1, Band2_4GHz);
  Open(2, Band5GHz_1);
  EXPECT_EQ(TakeJournal(),
            (Journal{"start WPS wlan0_1", "Busy: a WPS session runs on the interface \"wlan0_1\""}));
  driver_.FinishAll();
  Open(1, Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"open", "Busy: a WPS session runs on the interface \"wlan0_1\""}));
}

TEST_F(WPSSessionsTest, OpenAgainAfterTheEventOfTheirEnd) {
  HaveOne(1, Band2_4GHz);
  TellEnd("wlan0_2");
  Open(2, Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"Busy: a WPS session runs on the interface \"wlan0_1\""}));
  TellEnd("wlan0_1");
  Open(2, Band5GHz_1);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan1_2", "open"}));
}

TEST_F(WPSSessionsTest, OpenAgainAfterAStartThatFailed) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not take it");
  Open(1, Band2_4GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan0_1", "Radio failed: wlan0 does not take it"}));
  Open(2, Band2_4GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan0_2", "open"}));
}

TEST_F(WPSSessionsTest, KeepTheNextWhenTheStartOfOneThatHasEndedFails) {
  Open(1, Band2_4GHz);
  TellEnd("wlan0_1");
  Open(2, Band5GHz_1);
  driver_.FailNext(Band2_4GHz, "wlan0 does not take it");
  driver_.Finish(Band2_4GHz);
  driver_.FinishAll();
  Open(1, Band2_4GHz);
  EXPECT_EQ(TakeJournal(),
            (Journal{"start WPS wlan0_1", "start WPS wlan1_2", "Radio failed: wlan0 does not take it", "open",
                     "Busy: a WPS session runs on the interface \"wlan1_2\""}));
}

TEST_F(WPSSessionsTest, WaitForAChangeOfTheRadioAndLookAgain) {
  JoinUpstream(Band2_4GHz, "Cafe");
  Open(2, Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"done", "start WPS wlan0_2", "open"}));
  TellEnd("wlan0_2");

  JoinUpstream(Band5GHz_1, "Hotel");
  Delete(2);
  Open(2, Band2_4GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "Not found: there is no network 2");
  EXPECT_EQ(Available(1), "yes");
}

TEST_F(WPSSessionsTest, RefuseWhoWaitedWhileAnotherWasOpened) {
  JoinUpstream(Band2_4GHz, "Cafe");
  Open(1, Band2_4GHz);
  Open(2, Band5GHz_1);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(),
            (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe", "start WPS wlan1_2", "done",
                     "Busy: a WPS session runs on the interface \"wlan1_2\"", "open"}));
}

TEST_F(WPSSessionsTest, FollowTheBandToAnotherRadioThatServesItMeanwhile) {
  engine_->Make<void>([](const State& state) { return SwapBackhaulBand(state, TriBandRadios(), true); },
                      NoteResult());
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "done"}));
  engine_->Restart(ApplyMode::WhatDiffers, NoteResult());
  engine_->Make<void>([](const State& state) { return SwapBackhaulBand(state, TriBandRadios(), false); },
                      NoteResult());
  Open(1, Band5GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(),
            Join(AppliedOnAll("1 2"), Journal{"done", "save 1 2", "done", "start WPS wlan1_1", "open"}));
}

TEST_F(WPSSessionsTest, HoldTheRadioOnlyUntilTheDriverHasAnswered) {
  Open(1, Band2_4GHz);
  JoinUpstream(Band2_4GHz, "Cafe");
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan0_1"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe", "open"}));
}

TEST_F(WPSSessionsTest, OpenOnTheDefaultTargetByTheButton) {
  const auto target = wps_.DefaultTarget();
  ASSERT_TRUE(target.Succeeded());
  EXPECT_EQ(target.Value(), (NetworkRadioPair{1, Band2_4GHz}));
  wps_.PushButton(NoteResult("open"));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan0_1", "open"}));
  wps_.PushButton(NoteResult("open"));
  EXPECT_EQ(TakeJournal(), (Journal{"Busy: a WPS session runs on the interface \"wlan0_1\""}));
}

TEST_F(WPSSessionsTest, RefuseTheButtonWhereNoNetworkIsActivated) {
  Delete(1);
  Delete(2);
  driver_.FinishAll();
  TakeJournal();
  wps_.PushButton(NoteResult("open"));
  EXPECT_EQ(TakeJournal(), (Journal{"Not found: there is no activated network to open WPS on"}));
}

TEST_F(WPSSessionsTest, TellWhereTheyAreAvailable) {
  EXPECT_EQ(Available(1), "yes");
  EXPECT_EQ(Available(7), "Not found: there is no network 7");
  const auto noRadio = wps_.IsAvailable({1, Error});
  ASSERT_FALSE(noRadio.Succeeded());
  EXPECT_EQ(Text(noRadio.Why()), "Invalid argument: the radio Error does not exist");
  HaveOne(2, Band5GHz_2);
  EXPECT_EQ(Available(1), "no");
  TellEnd("wlan2_2");
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  Restart(ApplyMode::Everything);
  driver_.FinishAll();
  EXPECT_EQ(Available(1), "no");
}

TEST_F(WPSSessionsTest, EndByTheirInterface) {
  HaveOne(2, Band5GHz_1);
  End("wlan1_2");
  EXPECT_EQ(TakeJournal(), (Journal{"cancel WPS wlan1_2"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"ended"}));
  // The driver's word freed the place.
  Open(1, Band2_4GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan0_1", "open"}));
}

TEST_F(WPSSessionsTest, RefuseToEndWhatDoesNotRun) {
  End("wlan1_2");
  End("eth0");
  EXPECT_EQ(TakeJournal(), (Journal{"Not allowed: no WPS session runs on the interface \"wlan1_2\"",
                                    "Not found: no network has the interface \"eth0\""}));
  HaveOne(2, Band5GHz_1);
  End("wlan1_1");
  EXPECT_EQ(TakeJournal(), (Journal{"Not allowed: no WPS session runs on the interface \"wlan1_1\""}));
}

TEST_F(WPSSessionsTest, StayWhenTheirEndFails) {
  HaveOne(2, Band5GHz_1);
  driver_.FailNext(Band5GHz_1, "wlan1 is stuck");
  End("wlan1_2");
  driver_.FinishAll();
  Open(1, Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"cancel WPS wlan1_2", "Radio failed: wlan1 is stuck",
                                    "Busy: a WPS session runs on the interface \"wlan1_2\""}));
}

TEST_F(WPSSessionsTest, EndAfterTheirStartIsDone) {
  Open(2, Band5GHz_1);
  End("wlan1_2");
  End("wlan1_2");
  EXPECT_EQ(TakeJournal(), (Journal{"start WPS wlan1_2"}));
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"cancel WPS wlan1_2", "open"}));
  TellEnd("wlan1_2");
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(),
            (Journal{"Not allowed: no WPS session runs on the interface \"wlan1_2\"", "ended"}));
}

TEST_F(WPSSessionsTest, HandWhatIsAskedToTheRegistrar) {
  const Wifi::WPS_ERConfigInput input{"wlan1_2", "Two", "battery-staple", "PersonalWPA2"};
  wps_.ConfigureRegistrar(input, NoteResult("configured"));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"registrar wlan1_2", "configured"}));
  EXPECT_EQ(driver_.registrarInputs, (std::vector<Wifi::WPS_ERConfigInput>{input}));
}

TEST_F(WPSSessionsTest, RefuseWhatIsWrongForTheRegistrarAtOnceOrWhenItsTurnComes) {
  const Wifi::WPS_ERConfigInput input{"wlan1_2", "Two", "battery-staple", "PersonalWPA2"};
  auto wrong = input;
  wrong.ifName = "eth0";
  wps_.ConfigureRegistrar(wrong, NoteResult("configured"));
  EXPECT_EQ(TakeJournal(), (Journal{"Not found: no network has the interface \"eth0\""}));

  JoinUpstream(Band2_4GHz, "Cafe");
  Delete(2);
  wps_.ConfigureRegistrar(input, NoteResult("configured"));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "Not found: no network has the interface \"wlan1_2\"");
  EXPECT_EQ(driver_.registrarInputs, std::vector<Wifi::WPS_ERConfigInput>{});

  driver_.FailNext(Band5GHz_1, "wlan1 has no registrar");
  wrong.ifName = "wlan1_1";
  wps_.ConfigureRegistrar(wrong, NoteResult("configured"));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"registrar wlan1_1", "Radio failed: wlan1 has no registrar"}));
}

}  // namespace

}  // namespace TALO::Wifid
