#include "daemon/model/validation.h"

#include "support/print_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

Refusal BadArgument(const std::string& sentence) { return {ErrorCode::InvalidArgument, sentence}; }

const std::string k32 = "abcdefghijklmnopqrstuvwxyz012345";
const std::string k62 = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
const std::string k64HexDigits = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";

TEST(CheckSSID, TakesOneToThirtyTwoBytesOfAnyValue) {
  const std::vector<std::string> ssids = {
      "a", "Home", " ", k32, std::string(1, '\0'), std::string(32, '\xff'), "\"\\\n\x1b", "caf\xc3\xa9",
  };
  for (const std::string& ssid : ssids) {
    EXPECT_TRUE(CheckSSID(ssid).Succeeded()) << testing::PrintToString(ssid);
  }
}

TEST(CheckSSID, RefusesNoByteAndMoreThanThirtyTwo) {
  ASSERT_EQ(k32.size(), 32U);
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "the SSID \"\" has 0 bytes, it must have 1 to 32"},
      {k32 + "6", "the SSID \"abcdefghijklmnopqrstuvwxyz0123456\" has 33 bytes, it must have 1 to 32"},
      // 17 characters, but it is the bytes that count.
      {"\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9"
       "\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9.",
       "the SSID \"\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9"
       "\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9.\" has 33 bytes, it must have 1 to 32"},
      {k32 + "\n", "the SSID \"abcdefghijklmnopqrstuvwxyz012345\\x0a\" has 33 bytes, it must have 1 to 32"},
      {k32 + "\xff", "the SSID \"abcdefghijklmnopqrstuvwxyz012345\\xff\" has 33 bytes, it must have 1 to 32"},
      {k32 + std::string(1, '\0'),
       "the SSID \"abcdefghijklmnopqrstuvwxyz012345\\x00\" has 33 bytes, it must have 1 to 32"},
  };
  for (const auto& [ssid, sentence] : rows) {
    const auto check = CheckSSID(ssid);
    ASSERT_FALSE(check.Succeeded()) << testing::PrintToString(ssid);
    EXPECT_EQ(check.Why(), BadArgument(sentence));
  }
}

TEST(CheckSSID, NamesWhatItWasGiven) {
  const auto check = CheckSSID("", "network name");
  ASSERT_FALSE(check.Succeeded());
  EXPECT_EQ(check.Why(), BadArgument("the network name \"\" has 0 bytes, it must have 1 to 32"));
}

TEST(CheckPassphrase, TakesEightToSixtyThreePrintableCharactersOrSixtyFourHexDigits) {
  ASSERT_EQ(k62.size(), 62U);
  ASSERT_EQ(k64HexDigits.size(), 64U);
  const std::vector<std::string> passphrases = {
      "12345678",
      "        ",
      "~~~~~~~~",
      " !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~",
      k62,
      k62 + "!",
      k64HexDigits,
      std::string(64, '0'),
      std::string(64, 'f'),
      std::string(64, 'F'),
  };
  for (const std::string& passphrase : passphrases) {
    EXPECT_TRUE(CheckPassphrase(passphrase).Succeeded()) << testing::PrintToString(passphrase);
  }
}

struct RefusedPassphrase {
  std::string passphrase;
  std::string sentence;
};

std::vector<RefusedPassphrase> RefusedPassphrases() {
  const std::string limits = " characters, it must have 8 to 63, or 64 hexadecimal digits";
  const std::string notHex = "a passphrase of 64 characters must be hexadecimal digits, this one is not";
  const std::string notPrintable = "the passphrase holds a character that is not printable ASCII";
  return {
      {"", "the passphrase has 0" + limits},
      {"x", "the passphrase has 1" + limits},
      {"seven77", "the passphrase has 7" + limits},
      {k64HexDigits + "0", "the passphrase has 65" + limits},
      {std::string(1000, 'y'), "the passphrase has 1000" + limits},
      {k62 + "gh", notHex},
      {std::string(63, '0') + "g", notHex},
      {std::string(63, '0') + "G", notHex},
      {std::string(63, '0') + "/", notHex},
      {std::string(63, '0') + ":", notHex},
      {std::string(63, '0') + "@", notHex},
      {std::string(63, '0') + "`", notHex},
      {std::string(63, '0') + " ", notHex},
      {std::string(63, '0') + std::string(1, '\0'), notHex},
      {"seven77\x1f", notPrintable},
      {"seven77\x7f", notPrintable},
      {"seven77\n", notPrintable},
      {"seven77\t", notPrintable},
      {"seven77" + std::string(1, '\0'), notPrintable},
      {"seven77\x80", notPrintable},
      {"seven77\xff", notPrintable},
      {"caf\xc3\xa9-au-lait", notPrintable},
      {std::string(62, 'z') + "\x7f", notPrintable},
  };
}

TEST(CheckPassphrase, RefusesEverythingElse) {
  for (const auto& [passphrase, sentence] : RefusedPassphrases()) {
    const auto check = CheckPassphrase(passphrase);
    ASSERT_FALSE(check.Succeeded()) << testing::PrintToString(passphrase);
    EXPECT_EQ(check.Why(), BadArgument(sentence)) << testing::PrintToString(passphrase);
  }
}

TEST(CheckPassphrase, NeverPutsThePassphraseIntoTheSentence) {
  const std::vector<std::string> secrets = {
      "secret!",
      "secret!\n",
      "s\xc3\xa9" + std::string("cret!!!"),
      std::string(58, 'q') + "secret",
      std::string(59, 'q') + "secret",
  };
  for (const std::string& secret : secrets) {
    const auto check = CheckPassphrase(secret);
    ASSERT_FALSE(check.Succeeded()) << testing::PrintToString(secret);
    const std::string& sentence = check.Why().sentence;
    EXPECT_EQ(sentence.find("secret"), std::string::npos) << sentence;
    EXPECT_EQ(sentence.find("cret"), std::string::npos) << sentence;
    EXPECT_EQ(sentence.find("qqq"), std::string::npos) << sentence;
  }
}

}  // namespace

}  // namespace TALO::Wifid
