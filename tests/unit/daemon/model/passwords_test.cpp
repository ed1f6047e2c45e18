#include "daemon/model/passwords.h"

#include "support/routers.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;

constexpr std::int64_t kNow = 1'700'000'000;
const std::string kNew = "new passphrase";
const std::string kNewer = "newer passphrase";

/// All bytes from 0 on, over and over.
class CountingBytes {
 public:
  std::string operator()(std::size_t count) {
    std::string bytes;
    while (bytes.size() < count) {
      bytes += static_cast<char>(next_++);
    }
    return bytes;
  }

 private:
  unsigned char next_ = 0;
};

TEST(DrawnPassphrase, IsMadeFromTheBytesThatWereDrawn) {
  EXPECT_EQ(DrawPassphrase(CountingBytes()), "34679ADEFHLMNRTacdef");
}

TEST(DrawnPassphrase, ThrowsAwayTheBytesThatWouldFavourACharacter) {
  std::vector<std::size_t> asked;
  const auto draw = [&](std::size_t count) {
    asked.push_back(count);
    // 247 is the last byte that counts: 31 characters, 8 times each.
    return asked.size() == 1 ? "\xF7\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF" + std::string(11, '\0')
                             : std::string(count, '\x01');
  };
  EXPECT_EQ(DrawPassphrase(draw), "y3333333333344444444");
  EXPECT_EQ(asked, (std::vector<std::size_t>{20, 8}));
}

TEST(DrawnPassphrase, HoldsEachClearCharacterEquallyOftenAndNoOther) {
  std::map<char, int> times;
  CountingBytes bytes;
  // 248 of 256 bytes count, so 62 passphrases take all of them five times.
  for (int i = 0; i < 62; ++i) {
    const std::string passphrase = DrawPassphrase(std::ref(bytes));
    ASSERT_EQ(passphrase.size(), 20u);
    for (const char c : passphrase) {
      ++times[c];
    }
  }
  std::string characters;
  for (const auto& [character, count] : times) {
    characters += character;
    EXPECT_EQ(count, 40) << character;
  }
  EXPECT_EQ(characters, "34679ADEFHLMNRTacdefhjkmnprtwxy");
}

/// Networks 1 and 2; network 1 has passphrases of its own on the outer radios.
State RotatedNetworks() {
  State state = StateWithNetworks(TriBandRouter(), 2);
  state.networks[0].radioPassphrases = {{Band2_4GHz, "low passphrase", 2000},
                                        {Band5GHz_2, "high passphrase", 3000}};
  return state;
}

TEST(RotatePassword, ChangesAllRadiosAndForgetsWhatSingleOnesHad) {
  State expected = RotatedNetworks();
  expected.networks[0].passphrase = kNew;
  expected.networks[0].passphraseChangedAt = kNow;
  expected.networks[0].radioPassphrases.clear();
  EXPECT_EQ(StateAfter(RotatePassword(RotatedNetworks(), TriBandRouter(), {1, SmartConnect}, kNew, kNow)),
            expected);
}

TEST(RotatePassword, ChangesOneRadioOnly) {
  State expected = RotatedNetworks();
  expected.networks[1].radioPassphrases = {{Band5GHz_1, kNew, kNow}};
  EXPECT_EQ(StateAfter(RotatePassword(RotatedNetworks(), TriBandRouter(), {2, Band5GHz_1}, kNew, kNow)),
            expected);
}

TEST(RotatePassword, KeepsThePassphrasesInTheOrderOfTheRadios) {
  State expected = RotatedNetworks();
  expected.networks[0].radioPassphrases = {
      {Band2_4GHz, "low passphrase", 2000}, {Band5GHz_1, kNew, kNow}, {Band5GHz_2, "high passphrase", 3000}};
  EXPECT_EQ(StateAfter(RotatePassword(RotatedNetworks(), TriBandRouter(), {1, Band5GHz_1}, kNew, kNow)),
            expected);
}

TEST(RotatePassword, ReplacesTheOneThatTheRadioHas) {
  State expected = RotatedNetworks();
  expected.networks[0].radioPassphrases = {{Band2_4GHz, kNew, kNow}, {Band5GHz_2, "high passphrase", 3000}};
  State state = StateAfter(RotatePassword(RotatedNetworks(), TriBandRouter(), {1, Band2_4GHz}, kNew, kNow));
  EXPECT_EQ(state, expected);
  expected.networks[0].radioPassphrases[0] = {Band2_4GHz, kNewer, kNow + 1};
  EXPECT_EQ(StateAfter(RotatePassword(state, TriBandRouter(), {1, Band2_4GHz}, kNewer, kNow + 1)), expected);
}

TEST(RotatePassword, MeansTheRadioThatServesTheBand) {
  struct Case {
    Capabilities capabilities;
    bool swapped;
    RadioFrequency asked;
    RadioFrequency serving;
  };
  const std::vector<Case> cases = {
      {DualBandRouter(), false, Band5GHz_1, Band5GHz}, {DualBandRouter(), false, Band5GHz_2, Band5GHz},
      {TriBandRouter(), false, Band5GHz, Band5GHz_1},  {TriBandRouter(), true, Band5GHz, Band5GHz_2},
      {TriBandRouter(), true, Band5GHz_1, Band5GHz_2}, {TriBandRouter(), true, Band5GHz_2, Band5GHz_1},
  };
  for (const Case& c : cases) {
    State state = StateWithNetworks(c.capabilities, 1);
    state.backhaulSwapped = c.swapped;
    State expected = state;
    expected.networks[0].radioPassphrases = {{c.serving, kNew, kNow}};
    EXPECT_EQ(StateAfter(RotatePassword(state, c.capabilities, {1, c.asked}, kNew, kNow)), expected);
  }
}

TEST(RotatePassword, RefusesUnknownNetworksAndRadios) {
  const State state = RotatedNetworks();
  EXPECT_EQ(WhyNot(RotatePassword(state, TriBandRouter(), {3, SmartConnect}, kNew, kNow)),
            (Refusal{ErrorCode::NotFound, "there is no network 3"}));
  EXPECT_EQ(WhyNot(RotatePassword(state, TriBandRouter(), {3, Error}, kNew, kNow)),
            (Refusal{ErrorCode::NotFound, "there is no network 3"}));
  EXPECT_EQ(WhyNot(RotatePassword(state, TriBandRouter(), {1, Error}, kNew, kNow)),
            (Refusal{ErrorCode::InvalidArgument, "the radio Error does not exist"}));
  EXPECT_EQ(WhyNot(RotatePassword(state, TriBandRouter(), {1, RadioFrequency{5}}, kNew, kNow)),
            (Refusal{ErrorCode::InvalidArgument, "the radio 5 does not exist"}));
  EXPECT_EQ(WhyNot(RotatePassword(StateWithNetworks(LowBandRouter(), 1), LowBandRouter(), {1, Band5GHz}, kNew,
                                  kNow)),
            (Refusal{ErrorCode::NotSupported, "no radio of this router serves the band Band5GHz"}));
}

TEST(RotatePassword, IsForSecurityModesWithAPassphrase) {
  using enum SecurityMode;
  const std::map<SecurityMode, bool> modes = {
      {Disabled, false},
      {OWE, false},
      {WEP, false},
      {PersonalWPA, true},
      {PersonalWPA2, true},
      {PersonalWPA3, true},
      {PersonalWPAMixed, true},
      {PersonalWPA2_3Mixed, true},
      {EnterpriseWPA, false},
      {EnterpriseWPA2, false},
      {EnterpriseWPA3, false},
      {EnterpriseWPAMixed, false},
  };
  for (const auto& [mode, takesOne] : modes) {
    State state = RotatedNetworks();
    state.networks[1].securityMode = mode;
    const auto change = RotatePassword(state, TriBandRouter(), {2, SmartConnect}, kNew, kNow);
    const std::string name = Wifi::Util::EnumNameOf(mode);
    ASSERT_EQ(change.Succeeded(), takesOne) << name;
    if (!takesOne) {
      EXPECT_EQ(change.Why(), (Refusal{ErrorCode::NotSupported, "the network 2 has the security mode " +
                                                                    name + ", which has no passphrase"}));
    }
  }
}

TEST(RotatePassword, HoldsTheLimitsOfAPassphrase) {
  for (const std::size_t size : {8u, 63u}) {
    const std::string passphrase(size, 'p');
    EXPECT_EQ(StateAfter(RotatePassword(RotatedNetworks(), TriBandRouter(), {2, SmartConnect}, passphrase, 1))
                  .networks[1]
                  .passphrase,
              passphrase);
  }
  EXPECT_EQ(WhyNot(RotatePassword(RotatedNetworks(), TriBandRouter(), {2, SmartConnect}, "seven77", kNow)),
            (Refusal{ErrorCode::InvalidArgument,
                     "the passphrase has 7 characters, it must have 8 to 63, or 64 hexadecimal digits"}));
}

TEST(PassphraseOfANetwork, IsTheRadiosOwnWhereItHasOne) {
  const NetworkState network = RotatedNetworks().networks[0];
  EXPECT_EQ(PassphraseOn(network, Band2_4GHz), "low passphrase");
  EXPECT_EQ(PassphraseChangedAt(network, Band2_4GHz), 2000);
  EXPECT_EQ(PassphraseOn(network, Band5GHz_1), "passphrase1");
  EXPECT_EQ(PassphraseChangedAt(network, Band5GHz_1), 1001);
  EXPECT_EQ(PassphraseOn(network, Band5GHz_2), "high passphrase");
  EXPECT_EQ(PassphraseChangedAt(network, Band5GHz_2), 3000);
}

}  // namespace

}  // namespace TALO::Wifid
