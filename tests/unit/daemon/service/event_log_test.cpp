#include "daemon/service/event_log.h"

#include "support/fake_journal.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using Fields = std::vector<std::string>;

const Wifi::Util::MACAddress kPhone("02:aa:00:00:00:01");

/// What the journal gets of an event.
Fields Logged(const RadioEvent& event, Severity level = Severity::Debug) {
  const FakeJournal journal;
  LogEvent(Log(level, journal, LogTarget::Journal), event);
  return journal.TakeLast();
}

TEST(EventLog, TellsOfAStationThatConnected) {
  EXPECT_EQ(
      Logged(StationConnected{kPhone, 7, "wlan0_3"}),
      (Fields{"MESSAGE=02:aa:00:00:00:01 connected to wlan0_3", "PRIORITY=7", "SYSLOG_IDENTIFIER=talowifid",
              "TALOWIFI_STATION=02:aa:00:00:00:01", "TALOWIFI_NETWORK=7", "TALOWIFI_INTERFACE=wlan0_3"}));
}

TEST(EventLog, TellsOfAStationThatDisconnectedAndWhy) {
  EXPECT_EQ(Logged(StationDisconnected{kPhone, 7, "wlan0_3", "refused"}),
            (Fields{"MESSAGE=02:aa:00:00:00:01 disconnected from wlan0_3: refused", "PRIORITY=7",
                    "SYSLOG_IDENTIFIER=talowifid", "TALOWIFI_STATION=02:aa:00:00:00:01", "TALOWIFI_NETWORK=7",
                    "TALOWIFI_INTERFACE=wlan0_3", "TALOWIFI_REASON=refused"}));
}

TEST(EventLog, TellsOfARadioThatWentUpOrDown) {
  EXPECT_EQ(Logged(RadioStateChanged{RadioFrequency::Band5GHz_1, true}),
            (Fields{"MESSAGE=Band5GHz_1 is up", "PRIORITY=6", "SYSLOG_IDENTIFIER=talowifid",
                    "MESSAGE_ID=2ab109aa926b4d518b66ab37319b6f5d", "TALOWIFI_RADIO=Band5GHz_1",
                    "TALOWIFI_STATE=up"}));
  EXPECT_EQ(Logged(RadioStateChanged{RadioFrequency::Band2_4GHz, false}).at(0), "MESSAGE=Band2_4GHz is down");
}

TEST(EventLog, TellsHowAWPSSessionEnded) {
  EXPECT_EQ(Logged(WPSFinished{"wlan0_1", WPSFinished::Outcome::TimedOut}),
            (Fields{"MESSAGE=WPS on wlan0_1 ended: timed out", "PRIORITY=6", "SYSLOG_IDENTIFIER=talowifid",
                    "TALOWIFI_INTERFACE=wlan0_1", "TALOWIFI_OUTCOME=timed out"}));
}

TEST(EventLog, IsNotFilledByStationsThatComeAndGo) {
  EXPECT_EQ(Logged(StationConnected{kPhone, 7, "wlan0_3"}, Severity::Information), Fields{});
  EXPECT_EQ(Logged(StationDisconnected{kPhone, 7, "wlan0_3", "left"}, Severity::Information), Fields{});
}

}  // namespace

}  // namespace TALO::Wifid
