#include "daemon/store/state_codec.h"

#include "daemon/model/state_check.h"
#include "support/files.h"
#include "support/full_state.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace TALO::Wifid {

namespace {

/// The members that are as in a new record, as in "networks[0].slot ".
template <Wifi::Record T>
std::string MembersLeftAlone(const T& record, const std::string& where = "");

template <typename T>
std::string LeftAloneIn(const T& value, const std::string& where) {
  if constexpr (Wifi::Record<T>) {
    return MembersLeftAlone(value, where + ".");
  } else {
    return "";
  }
}

template <typename T>
std::string LeftAloneIn(const std::vector<T>& values, const std::string& where) {
  std::string names;
  for (std::size_t i = 0; i < values.size(); ++i) {
    names += LeftAloneIn(values[i], where + "[" + std::to_string(i) + "]");
  }
  return names;
}

template <Wifi::Record T>
std::string MembersLeftAlone(const T& record, const std::string& where) {
  std::string names;
  const T fresh;
  Wifi::ForEachMember(record, [&](auto member, const auto& value) {
    // The same member of the fresh one.
    Wifi::ForEachMember(fresh, [&](auto other, const auto& freshValue) {
      if constexpr (std::is_same_v<decltype(member), decltype(other)>) {
        if (value == freshValue) {
          names += where + member.name + " ";
        }
      }
    });
    names += LeftAloneIn(value, where + member.name);
  });
  return names;
}

TEST(FullState, HasNoMemberAsInANewRecord) { EXPECT_EQ(MembersLeftAlone(FullState()), ""); }

TEST(EncodeState, WritesEveryMember) { EXPECT_EQ(EncodeState(FullState()), FullText()); }

TEST(DecodeState, ReadsEveryMember) {
  const auto state = DecodeState(FullText());
  ASSERT_TRUE(state.Succeeded()) << state.Why().sentence;
  EXPECT_EQ(state.Value(), FullState());
}

TEST(EncodeState, WritesANewState) {
  EXPECT_EQ(EncodeState(State()),
            "{\n"
            "\t\"backhaul\" : \n"
            "\t{\n"
            "\t\t\"enable\" : false,\n"
            "\t\t\"passwordHex\" : \"\",\n"
            "\t\t\"ssidHex\" : \"\"\n"
            "\t},\n"
            "\t\"backhaulSTA\" : \n"
            "\t{\n"
            "\t\t\"enable\" : false,\n"
            "\t\t\"passwordHex\" : \"\",\n"
            "\t\t\"ssidHex\" : \"\"\n"
            "\t},\n"
            "\t\"backhaulSwapped\" : false,\n"
            "\t\"checksum\" : \"b59129f4\",\n"
            "\t\"context\" : \"router\",\n"
            "\t\"country\" : \"DE\",\n"
            "\t\"macFilterGlobal\" : \n"
            "\t{\n"
            "\t\t\"devices\" : [],\n"
            "\t\t\"enablePreventBroadcast\" : false,\n"
            "\t\t\"maximumBroadcast\" : 0\n"
            "\t},\n"
            "\t\"macFilterProfiles\" : [],\n"
            "\t\"mesh\" : \n"
            "\t{\n"
            "\t\t\"isRepeater\" : false,\n"
            "\t\t\"models\" : []\n"
            "\t},\n"
            "\t\"networks\" : [],\n"
            "\t\"nextMACFilterProfileId\" : 1,\n"
            "\t\"nextNetworkId\" : 1,\n"
            "\t\"radios\" : [],\n"
            "\t\"scanType\" : \"Default\",\n"
            "\t\"stations\" : [],\n"
            "\t\"version\" : 2\n"
            "}\n");
}

TEST(DecodeState, ReadsTheSampleOfEveryVersion) {
  for (int version = 1; version <= kStateVersion; ++version) {
    SCOPED_TRACE(version);
    const std::string sample = SampleOfVersion(version);
    ASSERT_NE(sample.find("\"version\" : " + std::to_string(version) + "\n"), std::string::npos);
    const auto state = DecodeState(sample);
    ASSERT_TRUE(state.Succeeded()) << state.Why().sentence;
    EXPECT_EQ(state.Value(), FullState());
  }
}

TEST(DecodeState, ReadsTheExampleOfTheDocumentation) {
  const std::string page = ReadFile(TALOWIFI_STATE_PAGE);
  const std::string opening = "```json\n";
  const std::size_t start = page.find(opening) + opening.size();
  const std::string example = page.substr(start, page.find("```", start) - start);
  const auto state = DecodeState(example);
  ASSERT_TRUE(state.Succeeded()) << state.Why().sentence;
  EXPECT_TRUE(CheckState(state.Value()).Succeeded());
  ASSERT_EQ(state.Value().networks.size(), 1U);
  EXPECT_EQ(state.Value().networks[0].passphrase, "correct-horse");
  EXPECT_EQ(EncodeState(state.Value()), example);
}

/// Expects that the state is read as it was written.
void ExpectReadAsWritten(const State& state) {
  const auto read = DecodeState(EncodeState(state));
  ASSERT_TRUE(read.Succeeded()) << read.Why().sentence;
  EXPECT_EQ(read.Value(), state);
}

TEST(DecodeState, ReadsWhatWasWritten) {
  ExpectReadAsWritten(State());
  State state = FullState();
  state.networks.push_back(state.networks.front());
  state.networks.back().id = 4;
  state.networks.back().radioPassphrases.clear();
  state.networks.back().schedules.clear();
  ExpectReadAsWritten(state);
}

TEST(DecodeState, ReadsNumbersAtTheirEnds) {
  State state = FullState();
  state.nextNetworkId = 2147483647;
  state.nextMACFilterProfileId = -2147483647 - 1;
  state.networks[0].passphraseChangedAt = 9223372036854775807;
  state.networks[0].schedules[0].validUntil = -9223372036854775807 - 1;
  ExpectReadAsWritten(state);
}

TEST(DecodeState, ReadsEveryByteInBytesAndSecrets) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  State state = FullState();
  state.networks[0].ssid = bytes;
  state.networks[0].networkName = bytes;
  state.networks[0].passphrase = bytes;
  state.stations[0].user = bytes;
  state.backhaul.password = bytes;
  ExpectReadAsWritten(state);
}

TEST(DecodeState, ReadsControlCharactersInTexts) {
  State state = FullState();
  state.context = std::string("\x00\x01\n\t\x7f", 5);
  state.macFilterProfiles[0].name = "\xf0\x9f\x93\xb6 \\ / \"";
  ExpectReadAsWritten(state);
}

TEST(DecodeState, ReadsEnumerationsWithoutAName) {
  State state = FullState();
  state.country = static_cast<CountryCode>(60000);
  state.networks[0].securityMode = static_cast<SecurityMode>(99);
  state.radios[0].radio = RadioFrequency::Error;
  ExpectReadAsWritten(state);
}

}  // namespace

}  // namespace TALO::Wifid
