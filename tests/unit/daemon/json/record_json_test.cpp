#include "daemon/json/record_json.h"

#include <boost/hana/adapt_struct.hpp>
#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace TALO::Wifid {

namespace JsonTest {

struct Inner {
  std::string ssid = "inner";
  int level = 7;

  bool operator==(const Inner&) const = default;
};

struct Everything {
  bool flag = true;
  int number = 1;
  std::int64_t moment = 2;
  std::string text = "default";
  std::string passphrase = "standard";
  Wifi::Util::RadioFrequency radio = Wifi::Util::RadioFrequency::Band2_4GHz;
  Wifi::CountryCode country = Wifi::CountryCode::DE;
  Wifi::Util::MACAddress address;
  Inner inner;
  std::vector<Inner> list;
  std::set<int> numbers;
  std::map<int, std::string> byNumber;
  std::map<Wifi::Util::RadioFrequency, int> byRadio;
  std::map<std::string, int> byText;
  std::map<Wifi::Util::MACAddress, int> byAddress;
  std::optional<int> perhaps;

  bool operator==(const Everything&) const = default;
};

}  // namespace JsonTest

}  // namespace TALO::Wifid

BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::JsonTest::Inner, ssid, level);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::JsonTest::Everything, flag, number, moment, text, passphrase, radio,
                        country, address, inner, list, numbers, byNumber, byRadio, byText, byAddress,
                        perhaps);

namespace TALO::Wifid::JsonTest {

using Wifi::CountryCode;
using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;

namespace {

constexpr const char* kExact = R"({
  "flag": false,
  "number": -2147483648,
  "moment": 9223372036854775807,
  "text": "Grüße",
  "passphraseHex": "00ff22",
  "radio": "Band5GHz_1",
  "country": "ZW",
  "address": "02:00:00:00:00:0f",
  "inner": {"ssidHex": "c3", "level": 0},
  "list": [{"ssidHex": "", "level": 1}, {"ssidHex": "6162", "level": 2}],
  "numbers": [-1, 3],
  "byNumber": {"-5": "minus", "12": "twelve"},
  "byRadio": {"SmartConnect": 1, "Band2_4GHz": 2},
  "byText": {"": 1, "a b": 2},
  "byAddress": {"02:00:00:00:00:01": 4},
  "perhaps": 0
})";

Everything ExactRecord() {
  Everything record;
  record.flag = false;
  record.number = std::numeric_limits<int>::min();
  record.moment = std::numeric_limits<std::int64_t>::max();
  record.text = "Grüße";
  record.passphrase = std::string("\x00\xff\x22", 3);
  record.radio = RadioFrequency::Band5GHz_1;
  record.country = CountryCode::ZW;
  record.address = MACAddress("02:00:00:00:00:0f");
  record.inner = {"\xc3", 0};
  record.list = {{"", 1}, {"ab", 2}};
  record.numbers = {-1, 3};
  record.byNumber = {{-5, "minus"}, {12, "twelve"}};
  record.byRadio = {{RadioFrequency::SmartConnect, 1}, {RadioFrequency::Band2_4GHz, 2}};
  record.byText = {{"", 1}, {"a b", 2}};
  record.byAddress = {{MACAddress("02:00:00:00:00:01"), 4}};
  record.perhaps = 0;
  return record;
}

template <RecordForm form>
std::string FailureOf(const Json::Value& json) {
  try {
    DecodeRecord<Everything, form>(json);
    return "accepted";
  } catch (const FormError& error) {
    return error.what();
  }
}

std::string ParseFailureOf(const std::string& text) {
  try {
    ParseJson(text);
    return "accepted";
  } catch (const FormError& error) {
    return error.what();
  }
}

Json::Value ExactWith(const std::string& name, const Json::Value& value) {
  Json::Value json = ParseJson(kExact);
  json[name] = value;
  return json;
}

Json::Value ExactWithout(const std::string& name) {
  Json::Value json = ParseJson(kExact);
  json.removeMember(name);
  return json;
}

}  // namespace

TEST(RecordJsonTest, WritesEveryKindOfMemberInTheExactForm) {
  EXPECT_EQ(ParseJson(kExact).toStyledString(), EncodeRecord(ExactRecord()).toStyledString());
}

TEST(RecordJsonTest, ReadsEveryKindOfMemberInTheExactForm) {
  EXPECT_TRUE((ExactRecord() == DecodeRecord<Everything, RecordForm::Exact>(ParseJson(kExact))));
}

TEST(RecordJsonTest, AnOptionalValueThatIsNotThereStandsAsNull) {
  Everything record = ExactRecord();
  record.perhaps.reset();
  const Json::Value json = EncodeRecord(record);
  EXPECT_TRUE(json.isMember("perhaps"));
  EXPECT_TRUE(json["perhaps"].isNull());
  EXPECT_TRUE((record == DecodeRecord<Everything, RecordForm::Exact>(json)));
}

TEST(RecordJsonTest, AValueWithoutANameStandsAsItsNumberAndIsReadAgain) {
  Everything record;
  record.radio = static_cast<RadioFrequency>(77);
  record.country = static_cast<CountryCode>(65535);
  record.byRadio = {{static_cast<RadioFrequency>(-9), 1}};
  const Json::Value json = EncodeRecord(record);
  EXPECT_EQ(Json::Value(77), json["radio"]);
  EXPECT_EQ(Json::Value(65535), json["country"]);
  EXPECT_EQ(Json::Value(1), json["byRadio"]["-9"]);
  EXPECT_TRUE((record == DecodeRecord<Everything, RecordForm::Exact>(json)));
}

TEST(RecordJsonTest, EveryMemberMustBeThereInTheExactForm) {
  for (const char* name :
       {"flag", "number", "moment", "text", "passphraseHex", "radio", "country", "address", "inner", "list",
        "numbers", "byNumber", "byRadio", "byText", "byAddress", "perhaps"}) {
    EXPECT_EQ(std::string(name) + " is missing", FailureOf<RecordForm::Exact>(ExactWithout(name)));
  }
}

TEST(RecordJsonTest, RefusesWhatIsNotOfTheExactForm) {
  struct Case {
    const char* name;
    const char* value;
    const char* sentence;
  };
  const Case cases[] = {
      {"flag", "0", "flag is neither true nor false"},
      {"number", "2147483648", "number is not a whole number in range"},
      {"number", "1.5", "number is not a whole number in range"},
      {"number", "\"1\"", "number is not a whole number in range"},
      {"moment", "9223372036854775808", "moment is not a whole number in range"},
      {"text", "1", "text is not a text"},
      {"text", "null", "text is not a text"},
      {"text", "\"\xff\"", "text is not UTF-8"},
      {"passphraseHex", "\"abc\"", "passphraseHex is not made of pairs of the digits 0 to 9 and a to f"},
      {"passphraseHex", "\"AB\"", "passphraseHex is not made of pairs of the digits 0 to 9 and a to f"},
      {"passphraseHex", "\"0g\"", "passphraseHex is not made of pairs of the digits 0 to 9 and a to f"},
      {"passphrase", "\"standard\"", "passphrase is unknown"},
      {"radio", "\"band5GHz\"", "radio is an unknown word"},
      {"radio", "4", "radio is a number where a word is due"},
      {"radio", "1.5", "radio is not a text"},
      {"country", "65536", "country is a number where a word is due"},
      {"address", "\"02:00:00:00:00\"", "address is not a MAC address"},
      {"inner", "[]", "inner is not an object"},
      {"inner", "{\"ssidHex\": \"\"}", "inner.level is missing"},
      {"inner", "{\"ssidHex\": \"\", \"level\": 1, \"depth\": 2}", "inner.depth is unknown"},
      {"list", "{}", "list is not a list"},
      {"list", "[{\"ssidHex\": \"\", \"level\": 1}, {\"ssidHex\": \"\"}]", "list[1].level is missing"},
      {"numbers", "[3, 4, 3]", "numbers[2] is listed twice"},
      {"byNumber", "[]", "byNumber is not an object"},
      {"byNumber", "{\"01\": \"\"}", "byNumber.01 is named by something else than a whole number in range"},
      {"byNumber", "{\"2147483648\": \"\"}",
       "byNumber.2147483648 is named by something else than a whole number in range"},
      {"byNumber", "{\"\": \"\"}", "byNumber.\"\" is named by something else than a whole number in range"},
      {"byRadio", "{\"Band6GHz\": 1}", "byRadio.Band6GHz is an unknown word"},
      {"byRadio", "{\"1\": 1}", "byRadio.1 is a number where a word is due"},
      {"byAddress", "{\"02-00-00-00-00-01\": 1, \"02:00:00:00:00:01\": 1}",
       "byAddress.02:00:00:00:00:01 is listed twice"},
      {"byAddress", "{\"x\": 1}", "byAddress.x is not a MAC address"},
      {"perhaps", "\"no\"", "perhaps is not a whole number in range"},
      {"extra\n\"", "1", "\"extra\\x0a\\x22\" is unknown"},
  };
  for (const Case& entry : cases) {
    EXPECT_EQ(entry.sentence, FailureOf<RecordForm::Exact>(
                                  ExactWith(entry.name, ParseJson(std::string("[") + entry.value + "]")[0])))
        << entry.name << ": " << entry.value;
  }
}

TEST(RecordJsonTest, RefusesARecordThatIsNotAnObject) {
  EXPECT_EQ("it is not an object", FailureOf<RecordForm::Exact>(ParseJson("[]")));
}

TEST(RecordJsonTest, WhatIsLeftOutByHandKeepsItsDefault) {
  EXPECT_TRUE((Everything{} == DecodeRecord<Everything, RecordForm::Handwritten>(ParseJson("{}"))));
  Everything expected;
  expected.inner.level = 9;
  expected.list = {{"inner", 8}};
  const auto record = DecodeRecord<Everything, RecordForm::Handwritten>(
      ParseJson(R"({"inner": {"level": 9}, "list": [{"level": 8}]})"));
  EXPECT_TRUE(expected == record);
}

TEST(RecordJsonTest, BytesByHandAreTextOrHexadecimalDigits) {
  const auto record = DecodeRecord<Everything, RecordForm::Handwritten>(ParseJson(
      R"({"passphrase": "correct-horse", "inner": {"ssidHex": "ff00"}, "list": [{"ssid": "Café"}]})"));
  EXPECT_EQ("correct-horse", record.passphrase);
  EXPECT_EQ(std::string("\xff\x00", 2), record.inner.ssid);
  EXPECT_EQ("Café", record.list.at(0).ssid);
}

TEST(RecordJsonTest, RefusesWhatIsNotOfTheHandwrittenForm) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {R"({"list": [{"ssid": "a", "ssidHex": "61"}]})", "list[0].ssidHex and ssid exclude each other"},
      {R"({"inner": {"sid": "a"}})", "inner.sid is unknown"},
      {R"({"radio": 77})", "radio is not a text"},
      {R"({"byRadio": {"77": 1}})", "byRadio.77 is an unknown word"},
      {R"({"passphrase": 12345678})", "passphrase is not a text"},
      {"{\"inner\": {\"ssid\": \"\xff\"}}", "inner.ssid is not UTF-8"},
  };
  for (const auto& [text, sentence] : cases) {
    EXPECT_EQ(sentence, FailureOf<RecordForm::Handwritten>(ParseJson(text))) << text;
  }
}

TEST(RecordJsonTest, SaysWhereATextIsNotJson) {
  const std::vector<std::pair<std::string, const char*>> cases = {
      {"", "it is not JSON (line 1, column 1)"},
      {"secret", "it is not JSON (line 1, column 1)"},
      {"{\n  \"number\": 1,\n}", "it is not JSON (line 3, column 1)"},
      {"{} x", "it is not JSON (line 1, column 4)"},
      {R"({"number": 1, "number": 2})", "it is not JSON (line 1, column 15)"},
      {"{} // comment", "it is not JSON (line 1, column 4)"},
      {std::string(100000, '['), "it is nested too deeply"},
  };
  for (const auto& [text, sentence] : cases) {
    EXPECT_EQ(sentence, ParseFailureOf(text)) << text.substr(0, 40);
  }
}

}  // namespace TALO::Wifid::JsonTest
