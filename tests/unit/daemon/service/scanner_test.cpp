#include "daemon/service/scanner.h"

#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

using Wifi::ScanResult;

ScanResult Heard(RadioFrequency radio, const std::string& ssid) {
  ScanResult result;
  result.radio = radio;
  result.ssid = ssid;
  return result;
}

class Scanners : public EngineTest {
 protected:
  Scanners() {
    driver_.inTheAir = {{Band2_4GHz, {Heard(Band2_4GHz, "Cafe"), Heard(Band2_4GHz, "Hotel")}},
                        {Band5GHz_1, {}},
                        {Band5GHz_2, {Heard(Band5GHz_2, "Museum")}}};
  }

  /// Its answer goes into the journal, as in "heard Cafe Hotel".
  void ScanOn(RadioFrequency radio) {
    Scan(*engine_, radio, [this](const auto& results) {
      if (!results.Succeeded()) {
        journal_.push_back(Text(results.Why()));
        return;
      }
      std::string text = "heard";
      for (const ScanResult& result : results.Value()) {
        text += " " + result.ssid;
      }
      journal_.push_back(text);
    });
  }
};

TEST_F(Scanners, AnswerWhatOneRadioHeard) {
  ScanOn(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"scan Band2_4GHz"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"heard Cafe Hotel"}));
  ScanOn(Band5GHz_1);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"scan Band5GHz_1", "heard"}));
}

TEST_F(Scanners, ListenOnTheRadioThatServesTheBand) {
  ScanOn(Band5GHz);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"scan Band5GHz_1", "heard"}));
}

TEST_F(Scanners, ListenOnAllRadiosAtOnceAndAnswerInTheirOrder) {
  ScanOn(SmartConnect);
  EXPECT_EQ(TakeJournal(), (Journal{"scan Band2_4GHz", "scan Band5GHz_1", "scan Band5GHz_2"}));
  driver_.Finish(Band5GHz_2);
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"heard Cafe Hotel Museum"}));
}

TEST_F(Scanners, AnswerTheFirstRefusalOnceAllRadiosAreDone) {
  driver_.FailNext(Band2_4GHz, "wlan0 is deaf");
  driver_.FailNext(Band5GHz_2, "wlan2 is deaf");
  ScanOn(SmartConnect);
  driver_.Finish(Band5GHz_2);
  driver_.Finish(Band2_4GHz);
  TakeJournal();
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan2 is deaf"}));
  // The radios are free again.
  ScanOn(Band5GHz_2);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"scan Band5GHz_2", "heard Museum"}));
}

TEST_F(Scanners, RefuseWhatIsNoRadio) {
  ScanOn(Error);
  ScanOn(static_cast<RadioFrequency>(5));
  EXPECT_EQ(TakeJournal(), (Journal{"Invalid argument: the radio Error does not exist",
                                    "Invalid argument: the radio 5 does not exist"}));
}

TEST_F(Scanners, LetAChangeOfTheSameRadioWaitAndOthersPass) {
  ScanOn(Band2_4GHz);
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band5GHz_1, "Hotel");
  EXPECT_EQ(TakeJournal(),
            (Journal{"scan Band2_4GHz", "save 1 2, joins Hotel", "apply Band5GHz_1: 1 2, joins Hotel"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe, joins Hotel", "apply Band2_4GHz: 1 2, joins Cafe",
                                    "heard Cafe Hotel"}));
}

TEST_F(Scanners, WaitForAChangeOfTheSameRadio) {
  JoinUpstream(Band2_4GHz, "Cafe");
  ScanOn(SmartConnect);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe",
                                    "scan Band5GHz_1", "scan Band5GHz_2"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"done", "scan Band2_4GHz", "heard Cafe Hotel Museum"}));
}

TEST_F(Scanners, AnswerQuestionsMeanwhile) {
  ScanOn(SmartConnect);
  EXPECT_EQ(LiveNow(), LiveOf(two_));
}

TEST_F(Scanners, ReconnectEveryRadioAndAnswerWhenAllWereTold) {
  ReconnectAll(*engine_, NoteResult());
  EXPECT_EQ(TakeJournal(), (Journal{"reconnect Band2_4GHz", "reconnect Band5GHz_1", "reconnect Band5GHz_2"}));
  driver_.Finish(Band2_4GHz);
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
}

TEST_F(Scanners, AnswerTheFirstRadioThatDoesNotReconnect) {
  driver_.FailNext(Band2_4GHz, "wlan0 is stuck");
  driver_.FailNext(Band5GHz_1, "wlan1 is stuck");
  ReconnectAll(*engine_, NoteResult());
  driver_.Finish(Band5GHz_1);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "Radio failed: wlan1 is stuck");
}

TEST(ScannersWithoutRadios, AnswerThatNothingIsThere) {
  Journal journal;
  FakeStore store(journal);
  FakeDriver driver(journal, {SupportedModel::Cedar300, {}});
  FakeClock clock;
  const ZoneCalendar calendar = Greenwich();
  FakeAnnouncer announcer(journal);
  Log log(Severity::Debug);
  Engine engine({store, driver, clock, calendar, announcer, log}, State());
  engine.Start([&journal] { journal.emplace_back("started"); });
  Scan(engine, SmartConnect, [&journal](const auto& results) {
    journal.push_back("heard " + std::to_string(results.Value().size()));
  });
  ReconnectAll(engine, [&journal](const auto& result) {
    journal.emplace_back(result.Succeeded() ? "reconnected" : "refused");
  });
  engine.Restart(ApplyMode::Everything, [&journal](const auto& result) {
    journal.emplace_back(result.Succeeded() ? "restarted" : "refused");
  });
  EXPECT_EQ(journal, (Journal{"started", "heard 0", "reconnected", "restarted"}));
}

}  // namespace

}  // namespace TALO::Wifid
