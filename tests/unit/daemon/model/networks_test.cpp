#include "daemon/model/networks.h"

#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

constexpr std::int64_t kNow = 1769860800;

/// Expects that the request is refused with this.
void ExpectRefused(const State& state, const Wifi::NetworkCreateInfo& info, const Refusal& why,
                   const Capabilities& radios = TriBandRadios()) {
  const auto change = CreateNetwork(state, radios, info, "br0", kNow);
  ASSERT_FALSE(change.Succeeded());
  EXPECT_EQ(change.Why(), why);
}

TEST(CreateNetwork, AddsADefaultNetworkAndChangesNothingElse) {
  State state = MakeState(7, {MakeNetwork(3, 1, "Old")});
  state.context = "repeater";
  state.country = CountryCode::US;
  state.radios[1].enable = false;
  const State before = state;

  const auto change =
      CreateNetwork(state, TriBandRadios(), {"Kitchen", "Home", "correct-horse"}, "br-lan", kNow);

  ASSERT_TRUE(change.Succeeded());
  EXPECT_EQ(change.Value().answer, 7);
  State expected = before;
  expected.nextNetworkId = 8;
  NetworkState made;
  made.id = 7;
  made.networkName = "Kitchen";
  made.ssid = "Home";
  made.hidden = false;
  made.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  made.passphrase = "correct-horse";
  made.passphraseChangedAt = 1769860800;
  made.activated = true;
  made.context = "repeater";
  made.bridge = "br-lan";
  made.slot = 2;
  expected.networks.push_back(made);
  EXPECT_EQ(change.Value().state, expected);
  EXPECT_EQ(state, before);
}

TEST(CreateNetwork, CountsIDsUpFromOne) {
  State state = MakeState(1, {});
  for (int id = 1; id <= 3; ++id) {
    auto change = CreateNetwork(state, TriBandRadios(), InfoOf("Net " + std::to_string(id)), "br0", kNow);
    ASSERT_TRUE(change.Succeeded());
    EXPECT_EQ(change.Value().answer, id);
    state = change.Value().state;
  }
  ASSERT_EQ(state.networks.size(), 3U);
  EXPECT_EQ(state.networks[0].id, 1);
  EXPECT_EQ(state.networks[1].id, 2);
  EXPECT_EQ(state.networks[2].id, 3);
  EXPECT_EQ(state.nextNetworkId, 4);
}

TEST(CreateNetwork, NeverUsesAnIDAgain) {
  const State two = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const auto one = DeleteNetwork(two, 2);
  ASSERT_TRUE(one.Succeeded());
  const auto none = DeleteNetwork(one.Value().state, 1);
  ASSERT_TRUE(none.Succeeded());
  EXPECT_EQ(none.Value().state, MakeState(3, {}));

  const auto change = CreateNetwork(none.Value().state, TriBandRadios(), InfoOf("New"), "br0", 1000);
  ASSERT_TRUE(change.Succeeded());
  EXPECT_EQ(change.Value().answer, 3);
  EXPECT_EQ(change.Value().state, MakeState(4, {MakeNetwork(3, 1, "New")}));
}

struct SlotRow {
  std::vector<int> taken;
  int expected;
};

TEST(CreateNetwork, TakesTheLowestFreeSlot) {
  const std::vector<SlotRow> rows = {
      {{}, 1}, {{1}, 2}, {{2}, 1}, {{1, 2, 3}, 4}, {{1, 3}, 2}, {{3, 1}, 2}, {{4, 2, 1}, 3}, {{16}, 1},
  };
  for (const SlotRow& row : rows) {
    State state = MakeState(1, {});
    for (const int slot : row.taken) {
      const int id = state.nextNetworkId++;
      state.networks.push_back(MakeNetwork(id, slot, "Net " + std::to_string(id)));
    }
    const auto change = CreateNetwork(state, TriBandRadios(), InfoOf("New"), "br0", kNow);
    ASSERT_TRUE(change.Succeeded());
    EXPECT_EQ(change.Value().state.networks.back().slot, row.expected);
  }
}

TEST(CreateNetwork, TakesTheLastFreeBSSAndRefusesOneMore) {
  const State almostFull = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const auto last = CreateNetwork(almostFull, TriBandRadios(3), InfoOf("Three"), "br0", kNow);
  ASSERT_TRUE(last.Succeeded());
  EXPECT_EQ(last.Value().state.networks.back().slot, 3);

  ExpectRefused(
      last.Value().state, InfoOf("Four"),
      {ErrorCode::LimitReached, "the radio Band2_4GHz carries 3 networks and cannot carry one more"},
      TriBandRadios(3));
}

TEST(CreateNetwork, IsLimitedByTheRadioThatCarriesTheFewest) {
  Capabilities radios = TriBandRadios(16);
  radios.radios[2].maximumBSSs = 1;
  ExpectRefused(
      MakeState(2, {MakeNetwork(1, 1, "One")}), InfoOf("Two"),
      {ErrorCode::LimitReached, "the radio Band5GHz_2 carries 1 networks and cannot carry one more"}, radios);
}

TEST(CreateNetwork, TakesSixteenNetworksAndRefusesTheSeventeenth) {
  State state = MakeState(1, {});
  for (int id = 1; id <= 16; ++id) {
    auto change = CreateNetwork(state, DualBandRadios(), InfoOf("Net " + std::to_string(id)), "br0", kNow);
    ASSERT_TRUE(change.Succeeded()) << id;
    state = change.Value().state;
    EXPECT_EQ(state.networks.back().slot, id);
  }
  ExpectRefused(
      state, InfoOf("Net 17"),
      {ErrorCode::LimitReached, "the radio Band2_4GHz carries 16 networks and cannot carry one more"},
      DualBandRadios());
}

TEST(CreateNetwork, RefusesAnSSIDInUse) {
  const std::string raw("\x00\xff\n", 3);
  const State state = MakeState(9, {MakeNetwork(4, 1, "Home"), MakeNetwork(8, 2, raw)});
  ExpectRefused(state, InfoOf("Home"),
                {ErrorCode::AlreadyExists, "the SSID \"Home\" is in use by network 4"});
  ExpectRefused(state, InfoOf(raw),
                {ErrorCode::AlreadyExists, "the SSID \"\\x00\\xff\\x0a\" is in use by network 8"});
}

TEST(CreateNetwork, RefusesTheSSIDOfADeactivatedNetworkToo) {
  State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  state.networks[0].activated = false;
  ExpectRefused(state, InfoOf("Home"),
                {ErrorCode::AlreadyExists, "the SSID \"Home\" is in use by network 1"});
}

TEST(CreateNetwork, RefusesTheSSIDsOfTheBackhaul) {
  State state = MakeState(1, {});
  state.backhaul.ssid = "Mesh";
  state.backhaulSTA.ssid = "Parent";
  ExpectRefused(state, InfoOf("Mesh"),
                {ErrorCode::AlreadyExists, "the SSID \"Mesh\" is in use by the backhaul"});
  ExpectRefused(state, InfoOf("Parent"),
                {ErrorCode::AlreadyExists, "the SSID \"Parent\" is in use by the backhaul station"});
}

TEST(CreateNetwork, TellsSSIDsApartByTheirBytes) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  for (const std::string& ssid : {std::string("home"), std::string("Home "), std::string("Home\0", 5)}) {
    EXPECT_TRUE(CreateNetwork(state, TriBandRadios(), InfoOf(ssid), "br0", kNow).Succeeded())
        << testing::PrintToString(ssid);
  }
}

TEST(CreateNetwork, LetsNetworksShareTheirName) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  EXPECT_TRUE(
      CreateNetwork(state, TriBandRadios(), {"Home", "Other", "battery-staple"}, "br0", kNow).Succeeded());
}

TEST(CreateNetwork, RefusesValuesOutsideTheirLimits) {
  const State state = MakeState(1, {});
  ExpectRefused(state, {"", "Home", "battery-staple"},
                {ErrorCode::InvalidArgument, "the network name \"\" has 0 bytes, it must have 1 to 32"});
  ExpectRefused(state, {std::string(33, 'n'), "Home", "battery-staple"},
                {ErrorCode::InvalidArgument,
                 "the network name \"nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn\" has 33 "
                 "bytes, it must have 1 to 32"});
  ExpectRefused(state, {"Home", "", "battery-staple"},
                {ErrorCode::InvalidArgument, "the SSID \"\" has 0 bytes, it must have 1 to 32"});
  ExpectRefused(state, {"Home", std::string(33, 's'), "battery-staple"},
                {ErrorCode::InvalidArgument,
                 "the SSID \"sssssssssssssssssssssssssssssssss\" has 33 bytes, it must have 1 to 32"});
  ExpectRefused(state, {"Home", "Home", "seven77"},
                {ErrorCode::InvalidArgument,
                 "the passphrase has 7 characters, it must have 8 to 63, or 64 hexadecimal digits"});
}

TEST(CreateNetwork, UsesTheLastIDsAndThenRefuses) {
  constexpr int kLast = std::numeric_limits<int>::max();
  State state = MakeState(kLast - 1, {});
  const auto last = CreateNetwork(state, TriBandRadios(), InfoOf("Home"), "br0", kNow);
  ASSERT_TRUE(last.Succeeded());
  EXPECT_EQ(last.Value().answer, 2147483646);
  ExpectRefused(last.Value().state, InfoOf("Other"),
                {ErrorCode::LimitReached, "all network IDs have been used"});
}

TEST(DeleteNetwork, TakesOneNetworkAwayAndChangesNothingElse) {
  const State state =
      MakeState(9, {MakeNetwork(2, 1, "Two"), MakeNetwork(5, 3, "Five"), MakeNetwork(8, 2, "Eight")});
  const auto change = DeleteNetwork(state, 5);
  ASSERT_TRUE(change.Succeeded());
  EXPECT_EQ(change.Value().state, MakeState(9, {MakeNetwork(2, 1, "Two"), MakeNetwork(8, 2, "Eight")}));
}

TEST(DeleteNetwork, FreesTheSSIDAndTheSlot) {
  const State state =
      MakeState(4, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Three")});
  const auto deleted = DeleteNetwork(state, 2);
  ASSERT_TRUE(deleted.Succeeded());
  const auto change = CreateNetwork(deleted.Value().state, TriBandRadios(3), InfoOf("Two"), "br0", 1000);
  ASSERT_TRUE(change.Succeeded());
  EXPECT_EQ(change.Value().state,
            MakeState(5, {MakeNetwork(1, 1, "One"), MakeNetwork(3, 3, "Three"), MakeNetwork(4, 2, "Two")}));
}

TEST(DeleteNetwork, RefusesAnUnknownID) {
  const State state = MakeState(3, {MakeNetwork(2, 1, "Two")});
  const std::vector<std::pair<int, std::string>> rows = {
      {1, "there is no network 1"},
      {3, "there is no network 3"},
      {0, "there is no network 0"},
      {-1, "there is no network -1"},
      {2147483647, "there is no network 2147483647"},
      {-2147483647 - 1, "there is no network -2147483648"},
  };
  for (const auto& [id, sentence] : rows) {
    const auto change = DeleteNetwork(state, id);
    ASSERT_FALSE(change.Succeeded()) << id;
    EXPECT_EQ(change.Why(), (Refusal{ErrorCode::NotFound, sentence}));
  }
}

}  // namespace

}  // namespace TALO::Wifid
