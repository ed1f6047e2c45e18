#include "daemon/store/state_codec.h"
#include "support/daemon_samples.h"
#include "support/state_texts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

/// FullText with one place of it replaced; the place must be there.
std::string Edited(const std::string& from, const std::string& to) {
  std::string text = FullText();
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

void ExpectRefused(const std::string& text, const std::string& sentence) {
  const auto decoded = DecodeState(text);
  ASSERT_FALSE(decoded.Succeeded()) << text;
  EXPECT_EQ(decoded.Why(), (Refusal{ErrorCode::StorageFailed, sentence}));
}

struct Edit {
  std::string from;
  std::string to;
  std::string sentence;
};

void ExpectRefused(const std::vector<Edit>& edits) {
  for (const Edit& edit : edits) {
    SCOPED_TRACE(edit.from + " -> " + edit.to);
    ExpectRefused(Edited(edit.from, edit.to), edit.sentence);
  }
}

TEST(DecodeState, RefusesATextThatIsNotJSON) {
  const std::vector<std::string> texts = {
      "",
      " ",
      "x",
      "{",
      "{]",
      "{'version':1}",
      "{\"version\":1,}",
      "{\"version\":1}}",
      "{\"version\":1} x",
      "{\"version\":1} // comment",
      "{\"version\":1,\"version\":1}",
      "\"version\"",
      "1",
      std::string("{\"version\":1}\0", 14),
      std::string(100, '\0'),
      FullText() + FullText(),
  };
  for (const std::string& text : texts) {
    ExpectRefused(text, "it is not JSON");
  }
}

TEST(DecodeState, RefusesATextWithoutAVersion) {
  for (const char* text :
       {"[]", "{}", "[{\"version\":1}]", "{\"version\":null}", "{\"version\":\"1\"}", "{\"version\":1.5}",
        "{\"version\":[1]}", "{\"version\":true}", "{\"version\":4294967297}", "{\"Version\":1}"}) {
    ExpectRefused(text, "it has no version");
  }
}

TEST(DecodeState, RefusesAnyVersionButItsOwn) {
  ExpectRefused({{"\"version\" : 1", "\"version\" : 2", "it is of version 2, this daemon knows version 1"},
                 {"\"version\" : 1", "\"version\" : 0", "it is of version 0, this daemon knows version 1"},
                 {"\"version\" : 1", "\"version\" : -1", "it is of version -1, this daemon knows version 1"},
                 {"\"version\" : 1", "\"version\" : 2147483647",
                  "it is of version 2147483647, this daemon knows version 1"}});
  // Whatever else a newer form holds.
  ExpectRefused("{\"version\":2}", "it is of version 2, this daemon knows version 1");
}

TEST(DecodeState, RefusesATextWithAMemberMissing) {
  ExpectRefused({
      {"\"context\" : \"c", "\"x\" : \"c", "context is missing"},
      {"\"country\"", "\"Country\"", "country is missing"},
      {"\"networks\"", "\"x\"", "networks is missing"},
      {"\"nextNetworkId\"", "\"x\"", "nextNetworkId is missing"},
      {"\"radios\"", "\"x\"", "radios is missing"},
      {"\"activated\"", "\"x\"", "networks[0].activated is missing"},
      {"\"bridge\" :", "\"x\" :", "networks[0].bridge is missing"},
      {"\"context\" : \"bridge\"", "\"x\" : \"bridge\"", "networks[0].context is missing"},
      {"\"hidden\"", "\"x\"", "networks[0].hidden is missing"},
      {"\"id\"", "\"x\"", "networks[0].id is missing"},
      {"\"networkNameHex\"", "\"networkName\"", "networks[0].networkNameHex is missing"},
      {"\"passphraseChangedAt\"", "\"x\"", "networks[0].passphraseChangedAt is missing"},
      {"\"passphraseHex\"", "\"passphrase\"", "networks[0].passphraseHex is missing"},
      {"\"securityMode\"", "\"x\"", "networks[0].securityMode is missing"},
      {"\"slot\"", "\"x\"", "networks[0].slot is missing"},
      {"\"ssidHex\"", "\"ssid\"", "networks[0].ssidHex is missing"},
      {"\"channel\" : 11", "\"x\" : 11", "radios[0].channel is missing"},
      {"\"channelWidth\" : 160", "\"x\" : 160", "radios[1].channelWidth is missing"},
      {"\"enable\" : true", "\"x\" : true", "radios[1].enable is missing"},
      {"\"radio\" : \"Band5GHz_1\"", "\"x\" : 1", "radios[1].radio is missing"},
      {"\"transmitPower\" : 50", "\"x\" : 50", "radios[0].transmitPower is missing"},
      {"\"wifiGeneration\" : 5", "\"x\" : 5", "radios[1].wifiGeneration is missing"},
  });
}

TEST(DecodeState, RefusesAMemberOfTheWrongType) {
  const std::string notNumber = " is not a whole number in range";
  ExpectRefused({
      {"\"caf\\u00e9 \\\"1\\\"\"", "7", "context is not a text"},
      {"\"caf\\u00e9 \\\"1\\\"\"", "null", "context is not a text"},
      {"\"US\"", "3", "country is not a text"},
      {"12", "\"12\"", "nextNetworkId" + notNumber},
      {"12", "12.5", "nextNetworkId" + notNumber},
      {"12", "null", "nextNetworkId" + notNumber},
      {"12", "true", "nextNetworkId" + notNumber},
      {"12", "2147483648", "nextNetworkId" + notNumber},
      {"12", "-2147483649", "nextNetworkId" + notNumber},
      {"12", "1e300", "nextNetworkId" + notNumber},
      {"\"activated\" : true", "\"activated\" : 1", "networks[0].activated is neither true nor false"},
      {"\"activated\" : true", "\"activated\" : \"true\"", "networks[0].activated is neither true nor false"},
      {"\"activated\" : true", "\"activated\" : null", "networks[0].activated is neither true nor false"},
      {"4107542400", "9223372036854775808", "networks[0].passphraseChangedAt" + notNumber},
      {"4107542400", "\"2100-03-01\"", "networks[0].passphraseChangedAt" + notNumber},
      {"\"PersonalWPA3\"", "5", "networks[0].securityMode is not a text"},
      {"\"486f6d65\"", "486", "networks[0].networkNameHex is not a text"},
      {"\"486f6d65\"", "[]", "networks[0].networkNameHex is not a text"},
      {"\"Band5GHz_1\"", "false", "radios[1].radio is not a text"},
  });
}

TEST(DecodeState, RefusesListsAndObjectsOfTheWrongType) {
  const std::string start = "{\"version\":1,\"nextNetworkId\":1,\"context\":\"router\",\"country\":\"DE\",";
  ExpectRefused(start + "\"networks\":{},\"radios\":[]}", "networks is not a list");
  ExpectRefused(start + "\"networks\":null,\"radios\":[]}", "networks is not a list");
  ExpectRefused(start + "\"networks\":[],\"radios\":\"none\"}", "radios is not a list");
  ExpectRefused(start + "\"networks\":[7],\"radios\":[]}", "networks[0] is not an object");
  ExpectRefused(start + "\"networks\":[[]],\"radios\":[]}", "networks[0] is not an object");
  ExpectRefused(start + "\"networks\":[],\"radios\":[null]}", "radios[0] is not an object");
}

TEST(DecodeState, RefusesAnUnknownWord) {
  ExpectRefused({{"\"US\"", "\"us\"", "country is an unknown word"},
                 {"\"US\"", "\"\"", "country is an unknown word"},
                 {"\"US\"", "\"Utopia\"", "country is an unknown word"},
                 {"\"PersonalWPA3\"", "\"PersonalWPA4\"", "networks[0].securityMode is an unknown word"},
                 {"\"Band2_4GHz\"", "\"Band6GHz\"", "radios[0].radio is an unknown word"}});
}

TEST(DecodeState, RefusesBytesThatAreNotPairsOfHexDigits) {
  for (const char* digits : {"0", "00f", "0g", "0G", "FF", "0x", " 00", "00 ", "+0", "-1", "0\\u0000"}) {
    ExpectRefused({{"00ff0a22", digits, "networks[0].ssidHex is not made of pairs of hexadecimal digits"}});
  }
  ExpectRefused({{"626174746572792d737461706c65", "battery-staple",
                  "networks[0].passphraseHex is not made of pairs of hexadecimal digits"}});
}

TEST(DecodeState, RefusesATextThatIsNotUTF8) {
  ExpectRefused({{"\"bridge\",", "\"caf\xe9\",", "networks[0].context is not UTF-8"},
                 {"\"bridge\",", "\"\xed\xa0\x80\",", "networks[0].context is not UTF-8"},
                 {"\"bridge\",", "\"\\udc00\",", "networks[0].context is not UTF-8"},
                 {"\"US\"", "\"\xff\"", "country is an unknown word"}});
}

TEST(DecodeState, RefusesATextCutOffAnywhere) {
  const std::string whole = FullText();
  // Without its last line end it is still whole.
  const auto withoutLineEnd = DecodeState(whole.substr(0, whole.size() - 1));
  ASSERT_TRUE(withoutLineEnd.Succeeded());
  EXPECT_EQ(withoutLineEnd.Value(), FullState());
  for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
    SCOPED_TRACE(length);
    ExpectRefused(whole.substr(0, length), "it is not JSON");
  }
}

TEST(DecodeState, SurvivesNestingWithoutEnd) {
  for (const char* opening : {"[", "{\"a\":"}) {
    std::string text;
    for (int depth = 0; depth < 100000; ++depth) {
      text += opening;
    }
    const auto decoded = DecodeState(text);
    ASSERT_FALSE(decoded.Succeeded());
    EXPECT_EQ(decoded.Why().code, ErrorCode::StorageFailed);
  }
}

/// Expects a state that is written and read as it is, or a refusal that says why.
void ExpectStateOrRefusal(const std::string& text) {
  const auto decoded = DecodeState(text);
  if (decoded.Succeeded()) {
    const auto again = DecodeState(EncodeState(decoded.Value()));
    ASSERT_TRUE(again.Succeeded()) << text;
    EXPECT_EQ(again.Value(), decoded.Value()) << text;
  } else {
    EXPECT_EQ(decoded.Why().code, ErrorCode::StorageFailed) << text;
    EXPECT_FALSE(decoded.Why().sentence.empty()) << text;
  }
}

TEST(DecodeState, SurvivesEverySingleFlippedBit) {
  const std::string whole = FullText();
  for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
    std::string text = whole;
    text[bit / 8] = static_cast<char>(text[bit / 8] ^ (1 << bit % 8));
    ExpectStateOrRefusal(text);
  }
}

TEST(DecodeState, SurvivesManyFlippedBits) {
  const std::string whole = FullText();
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = whole;
    for (unsigned flips = 1 + seed % 16; flips > 0; --flips) {
      char& byte = text[random() % text.size()];
      byte = static_cast<char>(byte ^ (1 << random() % 8));
    }
    ExpectStateOrRefusal(text);
  }
}

}  // namespace

}  // namespace TALO::Wifid
