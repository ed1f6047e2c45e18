#include "daemon/radio/linux/control/replies.h"
#include "support/print_model.h"
#include "unit/daemon/radio/linux/recorded.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Results = std::vector<Wifi::ScanResult>;

const std::string kOddSSID("caf\xc3\xa9\n\"#\\ =\0\xff ", 14);

/// On channel 1, 20 MHz wide.
Wifi::ScanResult Heard(const std::string& lastByte, const std::string& ssid, SecurityMode mode, bool wps) {
  return {RadioFrequency::Band5GHz_1,
          ssid,
          Wifi::Util::MACAddress("02:11:00:00:00:" + lastByte),
          1,
          20,
          -20,
          mode,
          wps,
          1};
}

/// One entry as it comes, with these flags and information elements.
std::string Entry(const std::string& flags, const std::string& elements) {
  return "id=4\nbssid=02:11:00:00:00:01\nfreq=5180\nlevel=-50\nage=7\nie=" + elements + "\nflags=" + flags +
         "\nssid=Home\n####\n";
}

Wifi::ScanResult Read(const std::string& flags, const std::string& elements = "") {
  const Results results = ReadHeard(Entry(flags, elements), RadioFrequency::Band5GHz);
  EXPECT_EQ(results.size(), 1U) << flags;
  return results.empty() ? Wifi::ScanResult() : results.front();
}

TEST(ReadHeard, ReadsWhatWasRecorded) {
  EXPECT_EQ(ReadHeard(Recorded("heard-first.txt"), RadioFrequency::Band5GHz_1),
            (Results{{RadioFrequency::Band5GHz_1, "Net PersonalWPA2_3Mixed",
                      Wifi::Util::MACAddress("02:11:00:00:02:01"), 36, 80, -27,
                      SecurityMode::PersonalWPA2_3Mixed, true, 1},
                     Heard("02", "Net OWE", SecurityMode::OWE, false),
                     Heard("04", "Net PersonalWPA2", SecurityMode::PersonalWPA2, true),
                     Heard("05", "Net PersonalWPA3", SecurityMode::PersonalWPA3, false),
                     Heard("06", "Net PersonalWPAMixed", SecurityMode::PersonalWPAMixed, true),
                     Heard("07", "Net PersonalWPA2_3Mixed", SecurityMode::PersonalWPA2_3Mixed, true),
                     Heard("08", "Firm 8", SecurityMode::EnterpriseWPA, false)}));
  EXPECT_EQ(ReadHeard(Recorded("heard-rest.txt"), RadioFrequency::Band5GHz_1),
            (Results{Heard("09", "Firm 9", SecurityMode::EnterpriseWPA2, false),
                     Heard("0a", "Firm 10", SecurityMode::EnterpriseWPA3, false),
                     Heard("0b", "Firm 11", SecurityMode::EnterpriseWPAMixed, false),
                     Heard("0c", "", SecurityMode::PersonalWPA2, false),
                     Heard("0d", kOddSSID, SecurityMode::PersonalWPA2, true),
                     Heard("0e", "", SecurityMode::PersonalWPA2, false),
                     Heard("03", "Net PersonalWPA", SecurityMode::PersonalWPA, false),
                     Heard("01", "Net Disabled", SecurityMode::Disabled, false)}));
}

TEST(ReadHeard, TakesNothingForHeardInTheFuture) {
  std::string entry = Entry("[ESS]", "");
  entry.replace(entry.find("age=7"), 5, "age=-7");
  const Results results = ReadHeard(entry, RadioFrequency::Band5GHz);
  ASSERT_EQ(results.size(), 1U);
  EXPECT_EQ(results.front().age, 0);
}

TEST(ReadHeard, ReadsTheWidthsThatWereRecorded) {
  const Results narrow = ReadHeard(Recorded("heard-40MHz.txt"), RadioFrequency::Band5GHz);
  ASSERT_EQ(narrow.size(), 1U);
  EXPECT_EQ(narrow.front().channel, 40);
  EXPECT_EQ(narrow.front().channelWidth, 40);
  const Results wide = ReadHeard(Recorded("heard-160MHz.txt"), RadioFrequency::Band5GHz);
  ASSERT_EQ(wide.size(), 1U);
  EXPECT_EQ(wide.front().channel, 36);
  EXPECT_EQ(wide.front().channelWidth, 160);
}

TEST(ReadHeard, GoesOnWhereALongAnswerEnded) {
  const std::string first = Recorded("heard-first.txt");
  EXPECT_EQ(std::string(kListHeard), "BSS RANGE=ALL MASK=0x21e87");
  EXPECT_EQ(LastHeardId(first), 6);
  EXPECT_EQ(ListHeardAfter(LastHeardId(first)), "BSS RANGE=7- MASK=0x21e87");
  EXPECT_EQ(LastHeardId(Recorded("heard-rest.txt")), 14);
  EXPECT_EQ(LastHeardId(""), -1);
  EXPECT_EQ(ListHeardAfter(-1), "BSS RANGE=0- MASK=0x21e87");
  EXPECT_EQ(ListHeardAfter(6, Elements::Without), "BSS RANGE=7- MASK=0x21a87");
}

TEST(LastHeardId, IsNoNegativeNumber) {
  EXPECT_EQ(LastHeardId("id=0\n====\n"), 0);
  EXPECT_EQ(LastHeardId("id=-5\n====\n"), -1);
  EXPECT_EQ(LastHeardId("id=7\n====\nid=-2147483648\n####\n"), -1);
  EXPECT_EQ(LastHeardId("id=last\n====\n"), -1);
}

TEST(ReadHeard, KnowsTheModeByItsFlags) {
  const std::vector<std::pair<std::string, SecurityMode>> rows = {
      {"[ESS]", SecurityMode::Disabled},
      {"[WEP][ESS]", SecurityMode::WEP},
      {"[WPA2-OWE-CCMP][ESS]", SecurityMode::OWE},
      {"[OWE-TRANS-OPEN][ESS]", SecurityMode::Disabled},
      {"[WPA-PSK-CCMP+TKIP][ESS]", SecurityMode::PersonalWPA},
      {"[WPA2-PSK-CCMP-preauth][ESS]", SecurityMode::PersonalWPA2},
      {"[WPA2-PSK-SHA256-CCMP][ESS]", SecurityMode::PersonalWPA2},
      {"[WPA2-FT/PSK-CCMP][ESS]", SecurityMode::PersonalWPA2},
      {"[WPA2-SAE+FT/SAE-CCMP][ESS]", SecurityMode::PersonalWPA3},
      {"[WPA2-FT/SAE-CCMP][ESS]", SecurityMode::PersonalWPA3},
      {"[WPA2-FT/PSK+FT/SAE-CCMP][ESS]", SecurityMode::PersonalWPA2_3Mixed},
      {"[WPA-PSK-TKIP][WPA2-PSK+SAE-CCMP][ESS]", SecurityMode::PersonalWPA2_3Mixed},
      {"[WPA-PSK-TKIP][WPA2-PSK-CCMP+TKIP][ESS]", SecurityMode::PersonalWPAMixed},
      {"[WPA-EAP-TKIP][ESS]", SecurityMode::EnterpriseWPA},
      {"[WPA2-EAP+FT/EAP-CCMP][ESS]", SecurityMode::EnterpriseWPA2},
      {"[WPA2-EAP+EAP-SHA256-CCMP][ESS]", SecurityMode::EnterpriseWPA2},
      {"[WPA2-EAP-SHA256-CCMP][ESS]", SecurityMode::EnterpriseWPA3},
      {"[WPA2-EAP-SUITE-B-192-GCMP-256][ESS]", SecurityMode::EnterpriseWPA3},
      {"[WPA-EAP-TKIP][WPA2-EAP-CCMP][ESS]", SecurityMode::EnterpriseWPAMixed},
      {"[WPA2-DPP-CCMP][ESS]", SecurityMode::Error},
      {"[WPA2--CCMP][ESS]", SecurityMode::Error},
      {"[OSEN-OSEN-CCMP][ESS]", SecurityMode::Error},
  };
  for (const auto& [flags, mode] : rows) {
    EXPECT_EQ(Read(flags).securityMode, mode) << flags;
  }
}

TEST(ReadHeard, KnowsWPSByItsFlags) {
  for (const char* flags : {"[WPA2-PSK-CCMP][WPS][ESS]", "[WPA2-PSK-CCMP][WPS-PBC][ESS]",
                            "[WPA2-PSK-CCMP][WPS-AUTH][ESS]", "[ESS][WPS-PIN]"}) {
    EXPECT_TRUE(Read(flags).wps) << flags;
  }
  EXPECT_FALSE(Read("[WPA2-PSK-CCMP][ESS][P2P]").wps);
}

TEST(ReadHeard, KnowsTheWidthByItsElements) {
  const std::vector<std::pair<std::string, int>> rows = {
      {"", 20},
      {"0000", 20},
      // HT Operation: no secondary channel, one that is not to be used, above, below.
      {"3d0324000000", 20},
      {"3d03240100", 20},
      {"3d03240500", 40},
      {"00003d03240700", 40},
      // VHT Operation: as HT says, 80, 160 and 80+80 by both middles, then as it was said before.
      {"3d03240500c005000000fcff", 40},
      {"3d03240500c005012a00fcff", 80},
      {"3d03240500c005012a32fcff", 160},
      {"3d03240500c005012a9bfcff", 160},
      {"3d03240500c005023200fcff", 160},
      {"3d03240500c005032a9bfcff", 160},
      // What is cut off or no hexadecimal number tells nothing.
      {"3d0324", 20},
      {"3d01", 20},
      {"3d", 20},
      {"c0012a", 20},
      {"3d0324050", 20},
      {"zz03240500", 20},
      {"3d03240500c0", 40},
  };
  for (const auto& [elements, width] : rows) {
    EXPECT_EQ(Read("[ESS]", elements).channelWidth, width) << elements;
  }
}

TEST(ReadHeard, LeavesOutWhatIsNoAccessPointOfEitherBand) {
  const auto count = [](const std::string& reply) {
    return ReadHeard(reply, RadioFrequency::Band5GHz).size();
  };
  const std::string good = "id=0\nbssid=02:11:00:00:00:01\nfreq=5180\nflags=[ESS]\n####\n";
  EXPECT_EQ(count(good), 1U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00\nfreq=5180\nflags=[ESS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nfreq=5180\nflags=[ESS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=5955\nflags=[ESS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=high\nflags=[ESS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=5180.0\nflags=[ESS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=5180\nflags=[IBSS]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=5180\nflags=[MESH]\n####\n"), 0U);
  EXPECT_EQ(count("id=0\nbssid=02:11:00:00:00:01\nfreq=5180\n####\n"), 0U);
  EXPECT_EQ(count("FAIL\n"), 0U);
  EXPECT_EQ(count("####\n====\n" + good), 1U);
}

TEST(ReadHeard, LeavesOutAnEntryThatDidNotComeWhole) {
  const std::string reply = Recorded("heard-first.txt");
  const std::size_t whole = reply.rfind("====\n") + 5;
  ASSERT_EQ(whole, reply.size());
  const std::string cut = reply.substr(0, whole - 1);
  EXPECT_EQ(ReadHeard(cut, RadioFrequency::Band5GHz).size(), 6U);
  EXPECT_EQ(LastHeardId(cut), 5);
}

TEST(FirstHeard, IsTheFirstEntryAlone) {
  const std::string first = "id=3\nssid=a\n====\n";
  EXPECT_EQ(FirstHeard(first + "id=4\nssid=b\n####\n"), first);
  EXPECT_EQ(FirstHeard("id=3\nssid=a\n####\n"), "id=3\nssid=a\n####\n");
  EXPECT_EQ(FirstHeard(""), "");
}

}  // namespace

}  // namespace TALO::Wifid
