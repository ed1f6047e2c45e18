#include "daemon/radio/linux/control/replies.h"

#include "support/print_model.h"
#include "unit/daemon/radio/linux/recorded.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Phase = LiveUpstream::Phase;

TEST(ReadFields, TakesEachLineApartAtItsFirstEqualsSign) {
  EXPECT_EQ(ReadFields("a=1\nssid=x=y \nempty=\nno sign\n\n=nameless\nlast=end"),
            (std::map<std::string, std::string>{
                {"", "nameless"}, {"a", "1"}, {"empty", ""}, {"last", "end"}, {"ssid", "x=y "}}));
  EXPECT_TRUE(ReadFields("").empty());
  EXPECT_TRUE(ReadFields("FAIL\n").empty());
}

TEST(ReadFields, ReadsARadioOfHostapd) {
  const auto fields = ReadFields(Recorded("hostapd-status.txt"));
  EXPECT_EQ(fields.at("state"), "ENABLED");
  EXPECT_EQ(fields.at("freq"), "2412");
  EXPECT_EQ(fields.at("bss[14]"), "wlan0_14");
  EXPECT_EQ(fields.at("num_sta[14]"), "0");
  EXPECT_EQ(ReadSSID(fields.at("ssid[13]")), std::string("caf\xc3\xa9\n\"#\\ =\0\xff ", 14));
}

TEST(ReadSSID, UndoesEveryEscape) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", ""},
      {"Home", "Home"},
      {" a b ", " a b "},
      {"caf\\xc3\\xa9", "caf\xc3\xa9"},
      {"\\\\x41", "\\x41"},
      {"\\\"\\\\\\e\\n\\r\\t", "\"\\\033\n\r\t"},
      {"\\x00\\x00", std::string(2, '\0')},
      {"\\xFF\\x7f", "\xff\x7f"},
  };
  for (const auto& [printed, bytes] : rows) {
    EXPECT_EQ(ReadSSID(printed), bytes) << printed;
  }
}

TEST(ReadSSID, LeavesWhatIsNoEscape) {
  for (const char* printed : {"\\", "a\\", "\\x", "\\x4", "\\xg1", "\\x+1", "\\q", "\\x 1"}) {
    EXPECT_EQ(ReadSSID(printed), printed);
  }
}

TEST(ReadUpstream, TellsOfAStationThatIsConnected) {
  LiveUpstream expected;
  expected.phase = Phase::Connected;
  expected.ssid = "Net PersonalWPA2";
  expected.bssid = Wifi::Util::MACAddress("02:11:00:00:02:01");
  expected.channel = 40;
  expected.signal = -27;
  expected.transmitRate = 117;
  EXPECT_EQ(ReadUpstream(Recorded("status-5GHz.txt"), Recorded("signal-5GHz.txt")), expected);

  expected.ssid = std::string("caf\xc3\xa9\n\"#\\ =\0\xff ", 14);
  expected.bssid = Wifi::Util::MACAddress("02:11:00:00:00:0d");
  expected.channel = 1;
  expected.signal = 0;
  expected.transmitRate = 0;
  EXPECT_EQ(ReadUpstream(Recorded("status-odd-ssid.txt"), Recorded("signal-none.txt")), expected);
}

TEST(ReadUpstream, TellsHowFarAStationGot) {
  const std::vector<std::pair<std::string, Phase>> rows = {
      {"status-inactive.txt", Phase::Disabled},         {"status-scanning.txt", Phase::Scanning},
      {"status-disconnected.txt", Phase::Scanning},     {"status-authenticating.txt", Phase::Connecting},
      {"status-associating.txt", Phase::Connecting},    {"status-associated.txt", Phase::Connecting},
      {"status-4way-handshake.txt", Phase::Connecting}, {"status-completed.txt", Phase::Connected},
  };
  for (const auto& [name, phase] : rows) {
    EXPECT_EQ(ReadUpstream(Recorded(name), "").phase, phase) << name;
  }
  EXPECT_EQ(ReadUpstream("wpa_state=GROUP_HANDSHAKE\n", "").phase, Phase::Connecting);
  EXPECT_EQ(ReadUpstream("wpa_state=INTERFACE_DISABLED\n", "").phase, Phase::Disabled);
  EXPECT_EQ(ReadUpstream("wpa_state=\n", "").phase, Phase::Disabled);
  EXPECT_EQ(ReadUpstream("FAIL\n", "").phase, Phase::Disabled);
}

TEST(ReadUpstream, HasNoSignalBeforeItIsConnected) {
  const LiveUpstream upstream = ReadUpstream(Recorded("status-associated.txt"), Recorded("signal-5GHz.txt"));
  EXPECT_EQ(upstream.channel, 1);
  EXPECT_EQ(upstream.signal, 0);
  EXPECT_EQ(upstream.transmitRate, 0);
}

TEST(ReadUpstream, LeavesOutWhatItCannotUnderstand) {
  LiveUpstream expected;
  expected.phase = Phase::Connected;
  EXPECT_EQ(ReadUpstream("wpa_state=COMPLETED\nbssid=nobody\nfreq=24x2\n",
                         "RSSI=99999999999999999999\nLINKSPEED=fast\n"),
            expected);
}

}  // namespace

}  // namespace TALO::Wifid
