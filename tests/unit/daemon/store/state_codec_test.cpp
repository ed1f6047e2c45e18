#include "daemon/store/state_codec.h"

#include "support/daemon_samples.h"
#include "support/state_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace TALO::Wifid {

namespace {

/// Expects that `state` comes back from its text as it was.
void ExpectRoundTrip(const State& state) {
  const auto decoded = DecodeState(EncodeState(state));
  ASSERT_TRUE(decoded.Succeeded()) << decoded.Why().sentence;
  EXPECT_EQ(decoded.Value(), state);
}

TEST(EncodeState, WritesEveryMemberByName) { EXPECT_EQ(EncodeState(FullState()), FullText()); }

TEST(EncodeState, WritesAStateOfNothing) {
  EXPECT_EQ(EncodeState(State{}),
            "{\n"
            "\t\"context\" : \"router\",\n"
            "\t\"country\" : \"DE\",\n"
            "\t\"networks\" : [],\n"
            "\t\"nextNetworkId\" : 1,\n"
            "\t\"radios\" : [],\n"
            "\t\"version\" : 1\n"
            "}\n");
}

TEST(DecodeState, ReadsEveryMember) {
  const auto decoded = DecodeState(FullText());
  ASSERT_TRUE(decoded.Succeeded()) << decoded.Why().sentence;
  EXPECT_EQ(decoded.Value(), FullState());
}

TEST(DecodeState, TakesSpacingAndMembersThatItDoesNotKnow) {
  const auto decoded = DecodeState(
      "\n { \"version\":1,\"radios\":[],\"networks\":[],\"nextNetworkId\":4,\"future\":{\"a\":[null]},"
      "\"country\":\"US\",\"context\":\"bridge\" } \t");
  ASSERT_TRUE(decoded.Succeeded()) << decoded.Why().sentence;
  State expected;
  expected.nextNetworkId = 4;
  expected.country = CountryCode::US;
  expected.context = "bridge";
  EXPECT_EQ(decoded.Value(), expected);
}

TEST(EncodeState, IsReadBackAsItWas) {
  ExpectRoundTrip(State{});
  ExpectRoundTrip(FullState());
  ExpectRoundTrip(MakeState(17, {MakeNetwork(1, 1, "One"), MakeNetwork(16, 16, "Sixteen")}));
}

TEST(EncodeState, KeepsEveryByteOfAnSSID) {
  State state;
  for (int byte = 0; byte < 256; ++byte) {
    state.networks.push_back(MakeNetwork(byte + 1, 1, std::string(1, static_cast<char>(byte))));
  }
  ExpectRoundTrip(state);
}

TEST(EncodeState, KeepsTheLimitsOfEveryNumber) {
  State state;
  state.nextNetworkId = std::numeric_limits<int>::max();
  NetworkState network = MakeNetwork(std::numeric_limits<int>::min(), 1, "Home");
  network.passphraseChangedAt = std::numeric_limits<std::int64_t>::max();
  state.networks.push_back(network);
  network.passphraseChangedAt = std::numeric_limits<std::int64_t>::min();
  state.networks.push_back(network);
  ExpectRoundTrip(state);
}

TEST(EncodeState, KeepsEveryTextOfAContext) {
  for (const std::string& context :
       {std::string(), std::string("\"\\/\b\f\n\r\t\x01\x1f\x7f"), std::string("a\0z", 3),
        std::string("\xc3\xa9 \xe2\x82\xac \xf0\x9f\x93\xb6")}) {
    State state;
    state.context = context;
    ExpectRoundTrip(state);
  }
}

TEST(EncodeState, KeepsEveryCountryAndSecurityMode) {
  for (int country = 0; country < static_cast<int>(CountryCode::MaxCountryCode); ++country) {
    State state;
    state.country = static_cast<CountryCode>(country);
    ExpectRoundTrip(state);
  }
  for (int mode = 0; mode <= static_cast<int>(SecurityMode::EnterpriseWPAMixed); ++mode) {
    State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
    state.networks[0].securityMode = static_cast<SecurityMode>(mode);
    ExpectRoundTrip(state);
  }
}

}  // namespace

}  // namespace TALO::Wifid
