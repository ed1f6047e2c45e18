#include "daemon/json/record_json.h"
#include "daemon/store/state_codec.h"
#include "support/full_state.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

/// FullTextWithoutChecksum with one place of it replaced; the place must be there.
std::string Edited(const std::string& from, const std::string& to) {
  std::string text = FullTextWithoutChecksum();
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

/// A place in the state's JSON: what it is called, and how to get there in a copy.
struct Place {
  std::string path;
  std::function<Json::Value&(Json::Value&)> find;
};

/// Every value of the whole state's JSON below and including `json`.
void ListPlaces(const Json::Value& json, const Place& here, std::vector<Place>& places) {
  places.push_back(here);
  const auto find = here.find;
  if (json.isObject()) {
    for (const std::string& name : json.getMemberNames()) {
      ListPlaces(json[name],
                 {here.path.empty() ? name : here.path + "." + name,
                  [find, name](Json::Value& root) -> Json::Value& { return find(root)[name]; }},
                 places);
    }
  } else if (json.isArray()) {
    for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
      ListPlaces(json[i],
                 {here.path + "[" + std::to_string(i) + "]",
                  [find, i](Json::Value& root) -> Json::Value& { return find(root)[i]; }},
                 places);
    }
  }
}

/// Calls `visit` with a copy of the whole state's JSON for each place in it that is not the version.
void ForEachPlace(const std::function<void(Json::Value& root, const Place& place)>& visit) {
  const Json::Value whole = ParseJson(FullTextWithoutChecksum());
  std::vector<Place> places;
  ListPlaces(whole, {"", [](Json::Value& root) -> Json::Value& { return root; }}, places);
  EXPECT_EQ(places.size(), 103U);
  for (const Place& place : places) {
    if (place.path != "version") {
      SCOPED_TRACE(place.path);
      Json::Value copy = whole;
      visit(copy, place);
    }
  }
}

TEST(DecodeState, RefusesATextThatIsNotJSON) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "(line 1, column 1)"},
      {" ", "(line 1, column 2)"},
      {"x", "(line 1, column 1)"},
      {"{", "(line 1, column 2)"},
      {"{]", "(line 1, column 2)"},
      {"{'version':1}", "(line 1, column 2)"},
      {"{\"version\":1,}", "(line 1, column 14)"},
      {"{\"version\":1}}", "(line 1, column 14)"},
      {"{\"version\":1}\nx", "(line 2, column 1)"},
      {"{\"version\":1} // comment", "(line 1, column 15)"},
      {"{\"version\":1,\"version\":1}", "(line 1, column 14)"},
      {"\"version\"", "(line 1, column 1)"},
      {"1", "(line 1, column 1)"},
      {std::string("{\"version\":1}\0", 14), "(line 1, column 14)"},
      {std::string(100, '\0'), "(line 1, column 1)"},
      {"\xff", "(line 1, column 1)"},
      {"\xef\xbb\xbf{\"version\":1}", "(line 1, column 1)"},
      {std::string("{\"version\":1}\n\0x", 16), "(line 2, column 1)"},
  };
  for (const auto& [text, position] : rows) {
    ExpectRefused(text, "it is not JSON " + position);
  }
}

TEST(DecodeState, RefusesTextBehindTheState) {
  for (const std::string behind : {"x", "{}", "]", ",", "\"\"", "1"}) {
    SCOPED_TRACE(behind);
    // The text ends in a line end, so what follows is alone on its line.
    ExpectRefused(FullTextWithoutChecksum() + behind, "it is not JSON (line 149, column 1)");
  }
  ExpectRefused(FullTextWithoutChecksum() + std::string(1, '\0'), "it is not JSON (line 149, column 1)");
  ExpectRefused(FullTextWithoutChecksum() + FullTextWithoutChecksum(), "it is not JSON (line 149, column 1)");
  for (const std::string blank : {"", "\n", "  \t\r\n"}) {
    const auto decoded = DecodeState(FullTextWithoutChecksum() + blank);
    ASSERT_TRUE(decoded.Succeeded()) << decoded.Why().sentence;
    EXPECT_EQ(decoded.Value(), FullState());
  }
}

TEST(DecodeState, RefusesATextWithoutAVersion) {
  for (const char* text : {"[]", "{}", "[{\"version\":1}]", "{\"version\":null}", "{\"version\":\"1\"}",
                           "{\"version\":1.5}", "{\"version\":[1]}", "{\"version\":true}",
                           "{\"version\":1.0}", "{\"version\":1e300}", "{\"Version\":1}"}) {
    SCOPED_TRACE(text);
    ExpectRefused(text, "it has no version");
  }
}

TEST(DecodeState, RefusesVersionsThatNeverWere) {
  ExpectRefused(
      {{"\"version\" : 2", "\"version\" : 0", "it is of version 0, this daemon knows the versions 1 to 2"},
       {"\"version\" : 2", "\"version\" : -1",
        "it is of version -1, this daemon knows the versions 1 to 2"}});
}

TEST(DecodeState, TellsANewerVersionFromADamagedText) {
  const std::vector<std::string> versions = {"3", "2147483647", "4294967297", "9223372036854775807"};
  for (const std::string& version : versions) {
    const Refusal newer{ErrorCode::NotSupported,
                        "it is of version " + version + ", this daemon knows the versions 1 to 2"};
    EXPECT_EQ(DecodeState(Edited("\"version\" : 2", "\"version\" : " + version)).Why(), newer);
    // Whatever else a newer form holds.
    EXPECT_EQ(DecodeState("{\"version\":" + version + ",\"checksum\":7}").Why(), newer);
  }
}

TEST(DecodeState, RefusesATextWithAnyMemberMissing) {
  ForEachPlace([](const Json::Value& root, const Place& place) {
    Json::Value inside = root;
    const Json::Value object = place.find(inside);
    if (!object.isObject()) {
      return;
    }
    for (const std::string& name : object.getMemberNames()) {
      const std::string path = place.path.empty() ? name : place.path + "." + name;
      Json::Value without = root;
      place.find(without).removeMember(name);
      ExpectRefused(without.toStyledString(), path == "version" ? "it has no version" : path + " is missing");
    }
  });
}

TEST(DecodeState, RefusesAMemberThatNoRecordHas) {
  ForEachPlace([](Json::Value& root, const Place& place) {
    if (place.find(root).isObject()) {
      place.find(root)["vlan"] = 1;
      ExpectRefused(root.toStyledString(), (place.path.empty() ? "" : place.path + ".") + "vlan is unknown");
    }
  });
  // The readable form of bytes and secrets is not the state's.
  ExpectRefused({{"\"hidden\"", "\"ssid\" : \"Home\",\"hidden\"", "networks[0].ssid is unknown"},
                 {"\"hidden\"", "\"passphrase\" : \"\",\"hidden\"", "networks[0].passphrase is unknown"},
                 {"\"hidden\"", "\"a\\nb\" : 1,\"hidden\"", "networks[0].\"a\\x0ab\" is unknown"}});
}

/// What a value of this kind is refused with where another is due.
std::string WhyNot(const Json::Value& due) {
  switch (due.type()) {
    case Json::objectValue:
      return " is not an object";
    case Json::arrayValue:
      return " is not a list";
    case Json::stringValue:
      return " is not a text";
    case Json::booleanValue:
      return " is neither true nor false";
    default:
      return " is not a whole number in range";
  }
}

TEST(DecodeState, RefusesAnyMemberOfAWrongType) {
  const std::vector<Json::Value> values = {Json::Value(),
                                           Json::Value(true),
                                           Json::Value(1.5),
                                           Json::Value("a text"),
                                           Json::Value(1e300),
                                           Json::Value(Json::arrayValue),
                                           Json::Value(Json::objectValue)};
  ForEachPlace([&](const Json::Value& root, const Place& place) {
    for (const Json::Value& value : values) {
      Json::Value changed = root;
      const Json::Value due = place.find(changed);
      if (place.path.empty() || due.type() == value.type()) {
        continue;
      }
      place.find(changed) = value;
      ExpectRefused(changed.toStyledString(), place.path + WhyNot(due));
    }
  });
}

TEST(DecodeState, RefusesNumbersOutOfRange) {
  const std::string notNumber = " is not a whole number in range";
  ExpectRefused({{"12,", "\"12\",", "nextNetworkId" + notNumber},
                 {"12,", "2147483648,", "nextNetworkId" + notNumber},
                 {"12,", "-2147483649,", "nextNetworkId" + notNumber},
                 {"4107542400", "9223372036854775808", "networks[0].passphraseChangedAt" + notNumber},
                 {"4107542400", "-9223372036854775809", "networks[0].passphraseChangedAt" + notNumber},
                 {"4107542400", "18446744073709551615", "networks[0].passphraseChangedAt" + notNumber},
                 {"4107542400", "4107542400.0", "networks[0].passphraseChangedAt" + notNumber},
                 {"4107542400", "4e9", "networks[0].passphraseChangedAt" + notNumber},
                 {"12,", "12.0,", "nextNetworkId" + notNumber},
                 {"12,", "1e1,", "nextNetworkId" + notNumber},
                 {"4107542400", "-9223372036854777856", "networks[0].passphraseChangedAt" + notNumber}});
}

TEST(DecodeState, RefusesAnUnknownWord) {
  ExpectRefused({{"\"US\"", "\"us\"", "country is an unknown word"},
                 {"\"US\"", "\"\"", "country is an unknown word"},
                 {"\"US\"", "\"Utopia\"", "country is an unknown word"},
                 {"\"PersonalWPA3\"", "\"PersonalWPA4\"", "networks[0].securityMode is an unknown word"},
                 {"\"Customized\"", "\"customized\"", "networks[0].schedules[0].mode is an unknown word"},
                 {"\"Deny\"", "\"Forbid\"", "macFilterProfiles[0].action is an unknown word"},
                 {"\"Dune40\"", "\"Dune41\"", "mesh.models[1] is an unknown word"},
                 {"\"Band2_4GHz\"", "\"Band6GHz\"", "networks[0].schedules[0].radio is an unknown word"}});
}

TEST(DecodeState, RefusesANumberForWhatHasAName) {
  ExpectRefused({{"\"BestAP\"", "2", "scanType is a number where a word is due"},
                 {"\"US\"", "65536", "country is a number where a word is due"},
                 {"\"US\"", "-1", "country is a number where a word is due"}});
}

TEST(DecodeState, RefusesAWordThatIsListedTwice) {
  ExpectRefused({{"\"Dune40\"", "\"Alder100\"", "mesh.models[1] is listed twice"}});
}

TEST(DecodeState, RefusesWhatIsNoMACAddress) {
  for (const char* word : {"any", "", "02:00:00:00:00", "02:00:00:00:00:01:02", "02:00:00:00:00:0g"}) {
    ExpectRefused({{"02:00:00:00:00:01", word, "stations[0].bssid is not a MAC address"}});
  }
}

TEST(DecodeState, RefusesBytesThatAreNotPairsOfHexDigits) {
  const std::string notDigits = " is not made of pairs of the digits 0 to 9 and a to f";
  for (const char* digits : {"0", "00f", "0g", "0G", "FF", "0x", " 00", "00 ", "+0", "-1", "0\\u0000"}) {
    ExpectRefused({{"00ff0a22", digits, "networks[0].ssidHex" + notDigits}});
  }
  ExpectRefused(
      {{"626174746572792d737461706c65", "battery-staple", "networks[0].passphraseHex" + notDigits}});
}

TEST(DecodeState, RefusesATextThatIsNotUTF8) {
  ExpectRefused({{"\"bridge\",", "\"caf\xe9\",", "networks[0].context is not UTF-8"},
                 {"\"bridge\",", "\"\xed\xa0\x80\",", "networks[0].context is not UTF-8"},
                 {"\"bridge\",", "\"\\udc00\",", "networks[0].context is not UTF-8"},
                 {"\"US\"", "\"\xff\"", "country is not UTF-8"},
                 {"\"hidden\"", "\"\xff\" : 1,\"hidden\"", "networks[0].\"\\xff\" is unknown"}});
}

TEST(DecodeState, RefusesANULAnywhere) {
  ExpectRefused(Edited("true,", std::string("tr\0e,", 5)), "it is not JSON (line 4, column 16)");
  const std::string whole = FullTextWithoutChecksum();
  for (std::size_t at = 0; at <= whole.size(); ++at) {
    const auto decoded = DecodeState(whole.substr(0, at) + std::string(1, '\0') + whole.substr(at));
    ASSERT_FALSE(decoded.Succeeded()) << at;
    EXPECT_TRUE(decoded.Why().sentence.starts_with("it is not JSON (line ")) << decoded.Why().sentence;
  }
}

TEST(DecodeState, RefusesATextCutOffAnywhere) {
  const std::string whole = FullTextWithoutChecksum();
  // Without its last line end it is still whole.
  const auto withoutLineEnd = DecodeState(whole.substr(0, whole.size() - 1));
  ASSERT_TRUE(withoutLineEnd.Succeeded());
  EXPECT_EQ(withoutLineEnd.Value(), FullState());
  for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
    const auto decoded = DecodeState(whole.substr(0, length));
    ASSERT_FALSE(decoded.Succeeded()) << length;
    EXPECT_EQ(decoded.Why().code, ErrorCode::StorageFailed);
    EXPECT_TRUE(decoded.Why().sentence.starts_with("it is not JSON (line ")) << decoded.Why().sentence;
  }
}

TEST(DecodeState, RefusesNestingWithoutEnd) {
  for (const char* opening : {"[", "{\"a\":"}) {
    std::string text;
    for (int depth = 0; depth < 100000; ++depth) {
      text += opening;
    }
    const auto decoded = DecodeState(text);
    ASSERT_FALSE(decoded.Succeeded());
    EXPECT_EQ(decoded.Why(), (Refusal{ErrorCode::StorageFailed, "it is nested too deeply"}));
  }
}

/// Expects a refusal in one line: whatever is changed in a text with a checksum is noticed.
void ExpectNoticed(const std::string& text) {
  const auto decoded = DecodeState(text);
  ASSERT_FALSE(decoded.Succeeded()) << text;
  EXPECT_FALSE(decoded.Why().sentence.empty()) << text;
  EXPECT_EQ(decoded.Why().sentence.find('\n'), std::string::npos) << text;
}

TEST(DecodeState, NoticesAFlippedBitInEveryByte) {
  const std::string whole = FullText();
  for (std::size_t byte = 0; byte < whole.size(); ++byte) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      std::string text = whole;
      text[byte] = static_cast<char>(text[byte] ^ (1U << bit));
      ExpectNoticed(text);
      ASSERT_FALSE(testing::Test::HasFailure()) << "bit " << bit << " of byte " << byte;
    }
  }
}

TEST(DecodeState, NoticesManyFlippedBits) {
  const std::string whole = FullText();
  for (unsigned seed = 1; seed <= 1000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = whole;
    for (unsigned flips = 1 + seed % 16; flips > 0; --flips) {
      char& byte = text[random() % text.size()];
      byte = static_cast<char>(byte ^ (1U << random() % 8));
    }
    if (text != whole) {
      ExpectNoticed(text);
    }
  }
}

TEST(DecodeState, RefusesAnotherChecksum) {
  const std::string digits = "0ac355b1";
  for (const char* other : {"0ac355b2", "00000000", "0AC355B1", "", "0ac355b", "0ac355b10"}) {
    std::string text = FullText();
    text.replace(text.find(digits), digits.size(), other);
    ExpectRefused(text, "it does not fit its checksum");
  }
  std::string number = FullText();
  number.replace(number.find("\"" + digits + "\""), digits.size() + 2, "42");
  ExpectRefused(number, "checksum is not a text");
}

TEST(DecodeState, TakesATextWithoutAChecksumAsItIs) {
  const auto decoded = DecodeState(FullTextWithoutChecksum());
  ASSERT_TRUE(decoded.Succeeded()) << decoded.Why().sentence;
  EXPECT_EQ(decoded.Value(), FullState());
}

}  // namespace

}  // namespace TALO::Wifid
