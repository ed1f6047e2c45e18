#include "values/enum_names.h"

#include "values/errors.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Wifi::Util {

namespace {

/// The names of an enumeration in the order of their values, which count up from `lowest`.
template <typename E>
struct Names;

template <>
struct Names<RadioFrequency> {
  static constexpr int lowest = -1;
  static constexpr const char* names = "Error SmartConnect Band2_4GHz Band5GHz Band5GHz_1 Band5GHz_2";
  static constexpr const char* typeName = "N4TALO4Wifi4Util14RadioFrequencyE";
};
template <>
struct Names<SecurityMode> {
  static constexpr int lowest = -1;
  static constexpr const char* names =
      "Error Disabled OWE WEP PersonalWPA PersonalWPA2 PersonalWPA3 PersonalWPAMixed PersonalWPA2_3Mixed "
      "EnterpriseWPA EnterpriseWPA2 EnterpriseWPA3 EnterpriseWPAMixed";
  static constexpr const char* typeName = "N4TALO4Wifi4Util12SecurityModeE";
};
template <>
struct Names<ScanType> {
  static constexpr int lowest = -1;
  static constexpr const char* names = "Error Disable Default BestAP";
  static constexpr const char* typeName = "N4TALO4Wifi4Util8ScanTypeE";
};
template <>
struct Names<MACFilterAction> {
  static constexpr int lowest = -1;
  static constexpr const char* names = "Error Allow Deny";
  static constexpr const char* typeName = "N4TALO4Wifi15MACFilterActionE";
};
template <>
struct Names<SupportedModel> {
  static constexpr int lowest = -1;
  static constexpr const char* names = "Error Alder100 Birch200 Cedar300 Dune40";
  static constexpr const char* typeName = "N4TALO4Wifi4Util14SupportedModelE";
};
template <>
struct Names<ScheduleMode> {
  static constexpr int lowest = -1;
  static constexpr const char* names = "Error ValidFor Customized";
  static constexpr const char* typeName = "N4TALO4Wifi4Util12ScheduleModeE";
};
template <>
struct Names<LogLevel> {
  static constexpr int lowest = 0;
  static constexpr const char* names = "Error Warning Information Debug";
  static constexpr const char* typeName = "N4TALO4Wifi4Util8LogLevelE";
};
template <>
struct Names<CountryCode> {
  static constexpr int lowest = 0;
  static constexpr const char* names =
      "AD AE AF AG AI AL AM AN AR AS AT AU AW AX AZ BA BB BD BE BF BG BH BL BM BN BO BR BS BT BY BZ CA CF "
      "CH CI CK CL CM CN CO CR CW CX CY CZ DE DK DM DO DZ EC EE EG ES ET FI FK FM FO FR GB GD GE GF GG GH "
      "GI GL GP GR GT GU GY HK HM HN HR HT HU ID IE IL IM IN IQ IS IT JE JM JO JP KE KH KN KR KW KY KZ LB "
      "LC LI LK LS LT LU LV MA MC MD ME MF MH MK MM MN MO MP MQ MR MS MT MU MV MW MX MY NA NC NF NG NI NL "
      "NO NP NU NZ OM PA PE PF PG PH PK PL PM PR PT PW PY QA RE RO RS RU RW SA SE SG SH SI SJ SK SM SN SR "
      "ST SV SX TC TD TF TG TH TN TR TT TW TZ UA UG UM US UY UZ VA VC VE VG VI VN VU WF WS YE YT ZA ZW "
      "MaxCountryCode";
  static constexpr const char* typeName = "N4TALO4Wifi11CountryCodeE";
};

template <typename E>
std::vector<std::pair<std::string, E>> NamesAndValues() {
  std::istringstream names(Names<E>::names);
  std::vector<std::pair<std::string, E>> pairs;
  int value = Names<E>::lowest;
  for (std::string name; names >> name; ++value) {
    pairs.emplace_back(name, static_cast<E>(value));
  }
  return pairs;
}

/// The message of the RuntimeError that `conversion` throws.
template <typename Conversion>
std::string FailureOf(Conversion conversion) {
  try {
    conversion();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.code(), make_error_code(ErrorCode::RuntimeError));
    return error.what();
  }
  return "no failure";
}

template <typename E>
std::string RefusalOf(const std::string& word) {
  return FailureOf([&] { EnumFromName<E>(word); });
}

template <typename E>
std::string ExpectedRefusal(const std::string& word) {
  return std::string("Failed to convert string to enum class [") + Names<E>::typeName + "]: " + word +
         ": Runtime error";
}

std::string WithOtherCase(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 'a' + 'A');
    } else if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return text;
}

template <typename E>
class EnumNames : public testing::Test {};

using Enumerations = testing::Types<RadioFrequency, SecurityMode, ScanType, MACFilterAction, SupportedModel,
                                    ScheduleMode, LogLevel, CountryCode>;
struct EnumerationName {
  template <typename E>
  static std::string GetName(int) {
    const std::string mangled = Names<E>::typeName;
    const auto first = mangled.find_last_of("0123456789") + 1;
    return mangled.substr(first, mangled.size() - 1 - first);
  }
};
TYPED_TEST_SUITE(EnumNames, Enumerations, EnumerationName);

TYPED_TEST(EnumNames, GivesEveryNameItsValue) {
  for (const auto& [name, value] : NamesAndValues<TypeParam>()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(EnumFromName<TypeParam>(name), value);
  }
}

TYPED_TEST(EnumNames, GivesEveryValueItsName) {
  for (const auto& [name, value] : NamesAndValues<TypeParam>()) {
    EXPECT_EQ(EnumNameOf(value), name);
    EXPECT_EQ(FindEnumName(value), name);
  }
}

TYPED_TEST(EnumNames, RefusesANameInOtherLetterCase) {
  for (const auto& [name, value] : NamesAndValues<TypeParam>()) {
    const std::string word = WithOtherCase(name);
    EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
  }
}

TYPED_TEST(EnumNames, TrimsNothingOffAName) {
  for (const auto& [name, value] : NamesAndValues<TypeParam>()) {
    for (const std::string& word : {name + " ", " " + name, name + "\n", name + "\t", name + "x"}) {
      EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
    }
  }
}

TYPED_TEST(EnumNames, RefusesABeginningOfAName) {
  for (const std::string word : {"E", "A", "S", "Erro", "MaxCountryCod", "Band"}) {
    EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
  }
}

TYPED_TEST(EnumNames, RefusesTheEmptyWord) {
  EXPECT_EQ(RefusalOf<TypeParam>(""), ExpectedRefusal<TypeParam>(""));
}

TYPED_TEST(EnumNames, RefusesTheNumberOfAValue) {
  for (const std::string word : {"0", "1", "-1"}) {
    EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
  }
}

TYPED_TEST(EnumNames, RefusesAQualifiedName) {
  for (const std::string word : {"LogLevel::Debug", "Error,SmartConnect"}) {
    EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
  }
}

TYPED_TEST(EnumNames, RefusesANameWithAZeroByteBehindItAndNamesItUpToThere) {
  const std::string name = NamesAndValues<TypeParam>().front().first;
  EXPECT_EQ(RefusalOf<TypeParam>(name + std::string("\0x", 2)), ExpectedRefusal<TypeParam>(name));
}

TYPED_TEST(EnumNames, PutsPercentSignsOfTheWordIntoTheMessageAsTheyAre) {
  EXPECT_EQ(RefusalOf<TypeParam>("%s%n%d"), ExpectedRefusal<TypeParam>("%s%n%d"));
}

TYPED_TEST(EnumNames, PutsALongWordIntoTheMessageWhole) {
  const std::string word(100000, 'w');
  EXPECT_EQ(RefusalOf<TypeParam>(word), ExpectedRefusal<TypeParam>(word));
}

TYPED_TEST(EnumNames, RefusesAValueWithoutANameByItsNumber) {
  using Limits = std::numeric_limits<std::underlying_type_t<TypeParam>>;
  const int count = static_cast<int>(NamesAndValues<TypeParam>().size());
  std::set<int> values = {
      Names<TypeParam>::lowest + count, Names<TypeParam>::lowest + count + 1, 255, 256, 1000, Limits::max()};
  if (Limits::is_signed) {
    values.insert({Names<TypeParam>::lowest - 1, -128, -129, Limits::min()});
  }
  for (const int value : values) {
    EXPECT_EQ(FailureOf([&] { EnumNameOf(static_cast<TypeParam>(value)); }),
              std::string("Failed to Convert enum class [") + Names<TypeParam>::typeName +
                  "] to string: " + std::to_string(value) + ": Runtime error");
  }
}

TYPED_TEST(EnumNames, FindsNoNameForAValueWithoutOneAndDoesNotThrow) {
  static_assert(noexcept(FindEnumName(TypeParam{})));
  const int count = static_cast<int>(NamesAndValues<TypeParam>().size());
  for (const int value : {Names<TypeParam>::lowest + count, 255, 256, 1000, 65535}) {
    EXPECT_EQ(FindEnumName(static_cast<TypeParam>(value)), "");
  }
}

TEST(LogLevelNames, GiveDebugTheValueThree) {
  EXPECT_EQ(static_cast<int>(EnumFromName<LogLevel>("Debug")), 3);
}

TEST(LogLevelNames, RefuseDebugInLowerAndUpperCaseWithTheirTypeInTheMessage) {
  EXPECT_EQ(RefusalOf<LogLevel>("debug"),
            "Failed to convert string to enum class [N4TALO4Wifi4Util8LogLevelE]: debug: Runtime error");
  EXPECT_EQ(RefusalOf<LogLevel>("DEBUG"),
            "Failed to convert string to enum class [N4TALO4Wifi4Util8LogLevelE]: DEBUG: Runtime error");
}

TEST(ErrorNames, AreTheSentinelOfRadioFrequencyAndALevelOfLogLevel) {
  EXPECT_EQ(static_cast<int>(EnumFromName<RadioFrequency>("Error")), -1);
  EXPECT_EQ(static_cast<int>(EnumFromName<LogLevel>("Error")), 0);
}

TEST(ErrorNames, AreUnknownToCountryCode) {
  EXPECT_EQ(RefusalOf<CountryCode>("Error"),
            "Failed to convert string to enum class [N4TALO4Wifi11CountryCodeE]: Error: Runtime error");
}

TEST(RadioFrequencyNames, RefuseTheValueSevenByItsNumber) {
  EXPECT_EQ(FailureOf([] { EnumNameOf(static_cast<RadioFrequency>(7)); }),
            "Failed to Convert enum class [N4TALO4Wifi4Util14RadioFrequencyE] to string: 7: Runtime error");
}

TEST(CountryCodeNames, HoldOneHundredAndNinetySevenCountries) {
  EXPECT_EQ(NamesAndValues<CountryCode>().size(), 198U);
  EXPECT_EQ(static_cast<int>(EnumFromName<CountryCode>("AD")), 0);
  EXPECT_EQ(static_cast<int>(EnumFromName<CountryCode>("AE")), 1);
  EXPECT_EQ(static_cast<int>(EnumFromName<CountryCode>("ZW")), 196);
}

TEST(CountryCodeNames, GiveMaxCountryCodeTheValueOneHundredAndNinetySevenAndBack) {
  EXPECT_EQ(static_cast<int>(EnumFromName<CountryCode>("MaxCountryCode")), 197);
  EXPECT_EQ(EnumNameOf(static_cast<CountryCode>(197)), "MaxCountryCode");
}

TEST(CountryCodeNames, RefuseCodesOutsideTheList) {
  for (const std::string code : {"AO", "KP", "XX", "AQ", "CU", "EU"}) {
    EXPECT_EQ(RefusalOf<CountryCode>(code), ExpectedRefusal<CountryCode>(code));
  }
}

TEST(CountryCodeNames, PrintAValueAboveTheListAsAnUnsignedNumber) {
  EXPECT_EQ(FailureOf([] { EnumNameOf(static_cast<CountryCode>(198)); }),
            "Failed to Convert enum class [N4TALO4Wifi11CountryCodeE] to string: 198: Runtime error");
  EXPECT_EQ(FailureOf([] { EnumNameOf(static_cast<CountryCode>(32768)); }),
            "Failed to Convert enum class [N4TALO4Wifi11CountryCodeE] to string: 32768: Runtime error");
  EXPECT_EQ(FailureOf([] { EnumNameOf(static_cast<CountryCode>(65535)); }),
            "Failed to Convert enum class [N4TALO4Wifi11CountryCodeE] to string: 65535: Runtime error");
}

template <typename... E>
constexpr bool areSigned = (std::is_signed_v<std::underlying_type_t<E>> && ...);

// -1 must fit where it is the sentinel, and the code of a country is 16 bits wide.
static_assert(
    areSigned<RadioFrequency, SecurityMode, ScanType, MACFilterAction, SupportedModel, ScheduleMode>);
static_assert(std::is_same_v<std::underlying_type_t<CountryCode>, std::uint16_t>);

}  // namespace

}  // namespace TALO::Wifi::Util
