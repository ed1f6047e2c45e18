#include "daemon/radio/linux/control/config_text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace TALO::Wifid {

namespace {

/// What setting this value throws, empty for nothing.
std::string RefusalOf(const std::string& value) {
  ConfigText text;
  try {
    text.Set("wpa_passphrase", value);
  } catch (const std::invalid_argument& refusal) {
    EXPECT_EQ(text.Text(), "") << "a refused value left something behind";
    return refusal.what();
  }
  return {};
}

TEST(ConfigText, IsALineForEachKey) {
  ConfigText text;
  text.Set("ssid", "a = b # \"c\" ").Set("channel", -36).Set("empty", "");
  EXPECT_EQ(text.Text(), "ssid=a = b # \"c\" \nchannel=-36\nempty=\n");
}

TEST(ConfigText, RefusesAValueThatWouldBeginAnotherLineAndDoesNotTellIt) {
  const std::string sentence = "the value of wpa_passphrase would begin another line";
  EXPECT_EQ(RefusalOf("secret\nssid=other"), sentence);
  EXPECT_EQ(RefusalOf("secret\r"), sentence);
  EXPECT_EQ(RefusalOf(std::string("secret\0", 7)), sentence);
  EXPECT_EQ(RefusalOf("\n"), sentence);
}

TEST(ConfigText, RefusesALineThatItsReadersTakeForTwo) {
  const std::string key = "wpa_passphrase=";
  EXPECT_EQ(RefusalOf(std::string(1998 - key.size(), 'x')), "");
  EXPECT_EQ(RefusalOf(std::string(1999 - key.size(), 'x')),
            "the value of wpa_passphrase is too long for a line");
}

}  // namespace

}  // namespace TALO::Wifid
