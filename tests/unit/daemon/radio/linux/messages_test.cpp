#include "daemon/radio/linux/control/messages.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

void PrintTo(const ControlMessage& message, std::ostream* out) {
  *out << message.interface << ": " << message.name;
  for (const std::string& word : message.words) {
    *out << " " << word;
  }
  for (const auto& [key, value] : message.fields) {
    *out << " " << key << "={" << value << "}";
  }
}

namespace {

using Words = std::vector<std::string>;
using Fields = std::map<std::string, std::string>;

const std::string kStation = "02:00:00:00:01:00";

TEST(ReadMessage, TakesApartWhatHostapdTells) {
  const std::vector<std::pair<std::string, ControlMessage>> rows = {
      {"IFNAME=wlan0_4 <3>AP-STA-CONNECTED 02:00:00:00:01:00",
       {"wlan0_4", "AP-STA-CONNECTED", {kStation}, {}}},
      {"IFNAME=wlan0_4 <3>AP-STA-CONNECTED 02:00:00:00:01:00 keyid=guest",
       {"wlan0_4", "AP-STA-CONNECTED", {kStation}, {{"keyid", "guest"}}}},
      {"IFNAME=wlan0_4 <3>WPS-PBC-ACTIVE ", {"wlan0_4", "WPS-PBC-ACTIVE", {}, {}}},
      {"IFNAME=wlan0_4 <3>CTRL-EVENT-TERMINATING", {"wlan0_4", "CTRL-EVENT-TERMINATING", {}, {}}},
      {"IFNAME=wlan0_4 <3>WPS-REG-SUCCESS 02:00:00:00:01:00 572cf82f-c957-5653-9b16-b5cfb298abf1",
       {"wlan0_4", "WPS-REG-SUCCESS", {kStation, "572cf82f-c957-5653-9b16-b5cfb298abf1"}, {}}},
      {"IFNAME=wlan0_3 <3>WDS-STA-INTERFACE-ADDED ifname=wlan0_3.sta1 sta_addr=02:00:00:00:01:00",
       {"wlan0_3", "WDS-STA-INTERFACE-ADDED", {}, {{"ifname", "wlan0_3.sta1"}, {"sta_addr", kStation}}}},
      {"<3>CTRL-EVENT-TERMINATING ", {"", "CTRL-EVENT-TERMINATING", {}, {}}},
  };
  for (const auto& [datagram, message] : rows) {
    EXPECT_EQ(ReadMessage(datagram), message);
  }
}

TEST(ReadMessage, TakesApartWhatWpaSupplicantTells) {
  const std::vector<std::pair<std::string, ControlMessage>> rows = {
      {"IFNAME=wlan1 <3>CTRL-EVENT-CONNECTED - Connection to 02:11:00:00:00:04 completed [id=0 id_str=]",
       {"wlan1",
        "CTRL-EVENT-CONNECTED",
        {"-", "Connection", "to", "02:11:00:00:00:04", "completed"},
        {{"id", "0"}, {"id_str", ""}}}},
      {"IFNAME=wlan1 <3>CTRL-EVENT-DISCONNECTED bssid=02:11:00:00:00:04 reason=3 locally_generated=1",
       {"wlan1",
        "CTRL-EVENT-DISCONNECTED",
        {},
        {{"bssid", "02:11:00:00:00:04"}, {"reason", "3"}, {"locally_generated", "1"}}}},
      {"IFNAME=wlan1 <3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"Net PersonalWPA2\" auth_failures=1 "
       "duration=10 reason=WRONG_KEY",
       {"wlan1",
        "CTRL-EVENT-SSID-TEMP-DISABLED",
        {},
        {{"id", "0"},
         {"ssid", "Net PersonalWPA2"},
         {"auth_failures", "1"},
         {"duration", "10"},
         {"reason", "WRONG_KEY"}}}},
      {"IFNAME=wlan1 <3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"caf\\xc3\\xa9\\n\\\"#\\\\ =\\x00\\xff \" "
       "auth_failures=1 duration=10 reason=WRONG_KEY",
       {"wlan1",
        "CTRL-EVENT-SSID-TEMP-DISABLED",
        {},
        {{"id", "0"},
         {"ssid", "caf\\xc3\\xa9\\n\\\"#\\\\ =\\x00\\xff "},
         {"auth_failures", "1"},
         {"duration", "10"},
         {"reason", "WRONG_KEY"}}}},
  };
  for (const auto& [datagram, message] : rows) {
    EXPECT_EQ(ReadMessage(datagram), message);
  }
}

TEST(ReadMessage, FindsTheAddressAmongItsWords) {
  const auto address = [](const std::string& datagram) { return ReadMessage(datagram)->Address(); };
  EXPECT_EQ(address("<3>AP-STA-CONNECTED 02:00:00:00:01:00"), Wifi::Util::MACAddress(kStation));
  EXPECT_EQ(address("<3>CTRL-EVENT-CONNECTED - Connection to 02:11:00:00:00:04 completed [id=0 id_str=]"),
            Wifi::Util::MACAddress("02:11:00:00:00:04"));
  EXPECT_EQ(address("<3>WPS-SUCCESS "), std::nullopt);
  EXPECT_EQ(address("<3>WPS-TIMEOUT 02:00:00:00:01"), std::nullopt);
}

TEST(ReadMessage, IsNothingForAnAnswerAndForWhatIsBroken) {
  for (const char* datagram :
       {"", "OK\n", "FAIL\n", "PONG\n", "IFNAME=", "IFNAME=wlan0", "IFNAME=wlan0 ", "IFNAME=wlan0 OK", "<",
        "<3", "<>AP-ENABLED", "<x>AP-ENABLED", "<3>", "<3> AP-ENABLED", "AP-ENABLED"}) {
    EXPECT_EQ(ReadMessage(datagram), std::nullopt) << datagram;
  }
}

TEST(ReadMessage, EndsAQuoteThatDoesNotEndWithTheMessage) {
  EXPECT_EQ(ReadMessage("<3>X ssid=\"a b"), (ControlMessage{"", "X", {}, {{"ssid", "\"a b"}}}));
  EXPECT_EQ(ReadMessage("<3>X ssid=\"a\\"), (ControlMessage{"", "X", {}, {{"ssid", "\"a\\"}}}));
  EXPECT_EQ(ReadMessage("<3>X ssid=\""), (ControlMessage{"", "X", {}, {{"ssid", "\""}}}));
}

}  // namespace

}  // namespace TALO::Wifid
