#include "daemon/model/mac_filter.h"

#include "support/routers.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::MACFilterAction;
using Wifi::MACFilterDevice;
using Wifi::MACFilterGlobal;
using Wifi::MACFilterProfile;
using Wifi::Util::MACAddress;

const MACAddress kPhone("aa:bb:cc:dd:ee:01");
const MACAddress kLaptop("aa:bb:cc:dd:ee:02");

MACFilterProfile Profile(const std::string& name, MACFilterAction action = MACFilterAction::Deny,
                         std::vector<MACFilterDevice> devices = {{"Phone", kPhone}}) {
  return {-1, name, action, std::move(devices)};
}

/// That many devices with addresses of their own.
std::vector<MACFilterDevice> Devices(int count) {
  std::vector<MACFilterDevice> devices;
  for (int i = 0; i < count; ++i) {
    std::ostringstream text;
    text << "02:00:00:00:" << std::hex << std::setfill('0') << std::setw(2) << i / 256 << ":" << std::setw(2)
         << i % 256;
    devices.push_back({"Device", MACAddress(text.str())});
  }
  return devices;
}

/// Two networks, and the profiles 1 "Guests" of network 1 and 2 "Family" of network 2.
State StateWithProfiles() {
  State state = StateWithNetworks(TriBandRouter(), 2);
  state.nextMACFilterProfileId = 3;
  state.macFilterProfiles = {{1, "Guests", MACFilterAction::Deny, {{"Phone", kPhone}}},
                             {2, "Family", MACFilterAction::Allow, {{"Laptop", kLaptop}, {"Phone", kPhone}}}};
  state.networks[0].macFilterProfileId = 1;
  state.networks[1].macFilterProfileId = 2;
  return state;
}

TEST(CreateMACFilterProfile, GivesTheNextIDAndLeavesTheNetworksAlone) {
  const State state = StateWithProfiles();
  MACFilterProfile profile = Profile("Night", MACFilterAction::Allow, {});
  profile.id = 77;
  const auto change = ValueOf(CreateMACFilterProfile(state, profile, false));
  State expected = state;
  expected.nextMACFilterProfileId = 4;
  expected.macFilterProfiles.push_back({3, "Night", MACFilterAction::Allow, {}});
  EXPECT_EQ(change.answer, 3);
  EXPECT_EQ(change.state, expected);
}

TEST(CreateMACFilterProfile, BeginsWithOne) {
  const State state = StateWithNetworks(TriBandRouter(), 1);
  EXPECT_EQ(ValueOf(CreateMACFilterProfile(state, Profile("First"), false)).answer, 1);
}

TEST(CreateMACFilterProfile, IsUsedByEveryNetworkWhenAppliedToAll) {
  const State state = StateWithProfiles();
  State expected = state;
  expected.nextMACFilterProfileId = 4;
  expected.macFilterProfiles.push_back({3, "All", MACFilterAction::Deny, {{"Phone", kPhone}}});
  expected.networks[0].macFilterProfileId = 3;
  expected.networks[1].macFilterProfileId = 3;
  EXPECT_EQ(StateAfter(CreateMACFilterProfile(state, Profile("All"), true)), expected);
}

TEST(CreateMACFilterProfile, NeverUsesAnIDAgain) {
  const State fewer = StateAfter(DeleteMACFilterProfiles(StateWithProfiles(), {2}));
  EXPECT_EQ(ValueOf(CreateMACFilterProfile(fewer, Profile("Next"), false)).answer, 3);
}

TEST(CreateMACFilterProfile, EndsWithTheLastID) {
  State state = StateWithProfiles();
  state.nextMACFilterProfileId = std::numeric_limits<int>::max() - 1;
  const auto change = ValueOf(CreateMACFilterProfile(state, Profile("Last"), false));
  EXPECT_EQ(change.answer, std::numeric_limits<int>::max() - 1);
  EXPECT_EQ(WhyNot(CreateMACFilterProfile(change.state, Profile("One more"), false)),
            (Refusal{ErrorCode::LimitReached, "all MAC filter profile IDs have been used"}));
}

TEST(CreateMACFilterProfile, StopsAt64Profiles) {
  State state = StateWithNetworks(TriBandRouter(), 1);
  for (int id = 1; id <= 64; ++id) {
    const auto change = ValueOf(CreateMACFilterProfile(state, Profile("Profile"), false));
    ASSERT_EQ(change.answer, id);
    state = change.state;
  }
  EXPECT_EQ(WhyNot(CreateMACFilterProfile(state, Profile("Profile"), false)),
            (Refusal{ErrorCode::LimitReached, "there are 64 MAC filter profiles, no more are possible"}));
  state = StateAfter(DeleteMACFilterProfiles(state, {64}));
  EXPECT_EQ(ValueOf(CreateMACFilterProfile(state, Profile("Profile"), false)).answer, 65);
}

struct ProfileCase {
  MACFilterProfile profile;
  ErrorCode code;
  std::string sentence;
};

std::vector<ProfileCase> BadProfiles() {
  const std::string longest(64, 'n');
  return {
      {Profile(""), ErrorCode::InvalidArgument,
       "the MAC filter profile name \"\" has 0 bytes, it must have 1 to 64"},
      {Profile(longest + "n"), ErrorCode::InvalidArgument,
       "the MAC filter profile name \"" + longest + "n\" has 65 bytes, it must have 1 to 64"},
      {Profile("Guests", MACFilterAction::Error), ErrorCode::InvalidArgument,
       "the MAC filter action Error does not exist"},
      {Profile("Guests", static_cast<MACFilterAction>(2)), ErrorCode::InvalidArgument,
       "the MAC filter action 2 does not exist"},
      {Profile("Guests", MACFilterAction::Allow, {{"A", kPhone}, {"B", kLaptop}, {"C", kPhone}}),
       ErrorCode::InvalidArgument,
       "the MAC filter profile \"Guests\" lists the MAC address aa:bb:cc:dd:ee:01 twice"},
      {Profile("Guests", MACFilterAction::Allow, {{longest + "n", kPhone}}), ErrorCode::InvalidArgument,
       "the name \"" + longest + "n\" of the device aa:bb:cc:dd:ee:01 has 65 bytes, it must have at most 64"},
      {Profile("Guests", MACFilterAction::Allow, Devices(1025)), ErrorCode::LimitReached,
       "the MAC filter profile \"Guests\" lists 1025 devices, it can hold 1024"},
  };
}

std::vector<MACFilterProfile> GoodProfiles() {
  const std::string longest(64, 'n');
  return {Profile("n"),
          Profile(longest),
          Profile("Guests"),  // names need not differ
          Profile("two\nlines"),
          Profile("Guests", MACFilterAction::Allow, {}),
          Profile("Guests", MACFilterAction::Deny, {{"", kPhone}, {longest, kLaptop}}),
          Profile("Guests", MACFilterAction::Deny, Devices(1024))};
}

TEST(CreateMACFilterProfile, RefusesWhatIsOutsideTheLimits) {
  for (const auto& [profile, code, sentence] : BadProfiles()) {
    EXPECT_EQ(WhyNot(CreateMACFilterProfile(StateWithProfiles(), profile, true)), (Refusal{code, sentence}));
  }
}

TEST(CreateMACFilterProfile, TakesWhatIsJustWithinTheLimits) {
  for (MACFilterProfile profile : GoodProfiles()) {
    SCOPED_TRACE(profile.name);
    const State after = StateAfter(CreateMACFilterProfile(StateWithProfiles(), profile, false));
    profile.id = 3;
    EXPECT_EQ(after.macFilterProfiles.back(), profile);
  }
}

TEST(ModifyMACFilterProfile, ReplacesTheProfileInItsPlace) {
  const State state = StateWithProfiles();
  State expected = state;
  expected.macFilterProfiles[0] = {1, "Visitors", MACFilterAction::Allow, {{"Laptop", kLaptop}}};
  EXPECT_EQ(StateAfter(ModifyMACFilterProfile(
                state, {1, "Visitors", MACFilterAction::Allow, {{"Laptop", kLaptop}}})),
            expected);
}

TEST(ModifyMACFilterProfile, HasTheLimitsOfANewOne) {
  for (auto [profile, code, sentence] : BadProfiles()) {
    profile.id = 2;
    EXPECT_EQ(WhyNot(ModifyMACFilterProfile(StateWithProfiles(), profile)), (Refusal{code, sentence}));
  }
  for (MACFilterProfile profile : GoodProfiles()) {
    SCOPED_TRACE(profile.name);
    profile.id = 2;
    EXPECT_EQ(StateAfter(ModifyMACFilterProfile(StateWithProfiles(), profile)).macFilterProfiles[1], profile);
  }
}

TEST(ModifyMACFilterProfile, DoesNotKnowOtherIDs) {
  for (const int id : {-1, 0, 3}) {
    EXPECT_EQ(WhyNot(ModifyMACFilterProfile(StateWithProfiles(), {id, "Name", MACFilterAction::Deny, {}})),
              (Refusal{ErrorCode::NotFound, "there is no MAC filter profile " + std::to_string(id)}));
  }
}

TEST(DeleteMACFilterProfiles, UnassignsThem) {
  const State state = StateWithProfiles();
  State expected = state;
  expected.macFilterProfiles.erase(expected.macFilterProfiles.begin());
  expected.networks[0].macFilterProfileId = -1;
  EXPECT_EQ(StateAfter(DeleteMACFilterProfiles(state, {1})), expected);
  expected.macFilterProfiles.clear();
  expected.networks[1].macFilterProfileId = -1;
  EXPECT_EQ(StateAfter(DeleteMACFilterProfiles(state, {1, 2})), expected);
}

TEST(DeleteMACFilterProfiles, DeletesAllOrNone) {
  EXPECT_EQ(WhyNot(DeleteMACFilterProfiles(StateWithProfiles(), {1, 2, 3})),
            (Refusal{ErrorCode::NotFound, "there is no MAC filter profile 3"}));
  EXPECT_EQ(WhyNot(DeleteMACFilterProfiles(StateWithProfiles(), {-1, 1})),
            (Refusal{ErrorCode::NotFound, "there is no MAC filter profile -1"}));
}

TEST(DeleteMACFilterProfiles, ChangesNothingForNoID) {
  EXPECT_EQ(StateAfter(DeleteMACFilterProfiles(StateWithProfiles(), {})), StateWithProfiles());
}

TEST(AssignMACFilterProfile, GivesANetworkOneProfileInPlaceOfItsOwn) {
  const State state = StateWithProfiles();
  State expected = state;
  expected.networks[0].macFilterProfileId = 2;
  EXPECT_EQ(StateAfter(AssignMACFilterProfile(state, 1, 2)), expected);
}

TEST(AssignMACFilterProfile, TakesTheProfileAwayForMinusOne) {
  const State state = StateWithProfiles();
  State expected = state;
  expected.networks[1].macFilterProfileId = -1;
  EXPECT_EQ(StateAfter(AssignMACFilterProfile(state, 2, -1)), expected);
}

TEST(AssignMACFilterProfile, DoesNotKnowOtherNetworksAndProfiles) {
  const State state = StateWithProfiles();
  EXPECT_EQ(WhyNot(AssignMACFilterProfile(state, 3, 1)),
            (Refusal{ErrorCode::NotFound, "there is no network 3"}));
  EXPECT_EQ(WhyNot(AssignMACFilterProfile(state, 3, -1)),
            (Refusal{ErrorCode::NotFound, "there is no network 3"}));
  for (const int id : {-2, 0, 3}) {
    EXPECT_EQ(WhyNot(AssignMACFilterProfile(state, 1, id)),
              (Refusal{ErrorCode::NotFound, "there is no MAC filter profile " + std::to_string(id)}));
  }
}

TEST(SetMACFilterGlobal, IsKeptAsGiven) {
  const State state = StateWithProfiles();
  const std::vector<MACFilterGlobal> globals = {
      {{}, true, 0},
      {{{"Phone", kPhone}, {"Laptop", kLaptop}}, true, 100},
      {{{"Phone", kPhone}}, false, std::numeric_limits<int>::max()},
      {Devices(1024), true, 5},
  };
  for (const MACFilterGlobal& global : globals) {
    State expected = state;
    expected.macFilterGlobal = global;
    EXPECT_EQ(StateAfter(SetMACFilterGlobal(state, DualBandRouter(), global)), expected);
  }
}

TEST(SetMACFilterGlobal, KeepsTheListWhenItIsSwitchedOff) {
  State state = StateWithProfiles();
  state.macFilterGlobal = {{{"Phone", kPhone}}, true, 100};
  State expected = state;
  expected.macFilterGlobal = {{{"Phone", kPhone}}, false, 7};
  EXPECT_EQ(StateAfter(SetMACFilterGlobal(state, DualBandRouter(), {{}, false, 7})), expected);
}

TEST(SetMACFilterGlobal, ForgetsTheListWhenItIsSwitchedOnForEveryDevice) {
  State state = StateWithProfiles();
  state.macFilterGlobal = {{{"Phone", kPhone}}, false, 100};
  State expected = state;
  expected.macFilterGlobal = {{}, true, 100};
  EXPECT_EQ(StateAfter(SetMACFilterGlobal(state, DualBandRouter(), {{}, true, 100})), expected);
}

TEST(SetMACFilterGlobal, RefusesWhatIsOutsideTheLimits) {
  const std::vector<std::pair<MACFilterGlobal, Refusal>> cases = {
      {{{}, true, -1},
       {ErrorCode::InvalidArgument,
        "the maximum of -1 broadcast frames a second is negative, it must be 0 or more"}},
      {{{}, false, -1},
       {ErrorCode::InvalidArgument,
        "the maximum of -1 broadcast frames a second is negative, it must be 0 or more"}},
      {{{{"A", kPhone}, {"B", kPhone}}, true, 100},
       {ErrorCode::InvalidArgument, "the broadcast limit lists the MAC address aa:bb:cc:dd:ee:01 twice"}},
      {{Devices(1025), true, 100},
       {ErrorCode::LimitReached, "the broadcast limit lists 1025 devices, it can hold 1024"}},
  };
  for (const auto& [global, refusal] : cases) {
    EXPECT_EQ(WhyNot(SetMACFilterGlobal(StateWithProfiles(), DualBandRouter(), global)), refusal);
  }
}

TEST(SetMACFilterGlobal, IsRefusedWhereARadioCannotLimitBroadcasts) {
  const State state = StateWithProfiles();
  Capabilities router = DualBandRouter();
  router.radios[1].limitsBroadcasts = false;
  EXPECT_EQ(WhyNot(SetMACFilterGlobal(state, router, {{}, true, 100})),
            (Refusal{ErrorCode::NotSupported, "radios of this router cannot limit broadcasts: Band5GHz"}));
  router.radios[0].limitsBroadcasts = false;
  EXPECT_EQ(WhyNot(SetMACFilterGlobal(state, router, {{{"Phone", kPhone}}, true, 100})),
            (Refusal{ErrorCode::NotSupported,
                     "radios of this router cannot limit broadcasts: Band2_4GHz, Band5GHz"}));
  State expected = state;
  expected.macFilterGlobal = {{{"Phone", kPhone}}, false, 100};
  EXPECT_EQ(StateAfter(SetMACFilterGlobal(state, router, {{{"Phone", kPhone}}, false, 100})), expected);
}

TEST(AccessOfANetwork, FollowsTheActionOfItsProfile) {
  State state = StateWithProfiles();
  EXPECT_EQ(AccessOf(state, state.networks[0]), (AccessPlan{AccessPlan::Rule::AllButListed, {kPhone}}));
  EXPECT_EQ(AccessOf(state, state.networks[1]),
            (AccessPlan{AccessPlan::Rule::OnlyListed, {kPhone, kLaptop}}));
}

TEST(AccessOfANetwork, IsForEverybodyWithoutAProfile) {
  State state = StateWithProfiles();
  state.networks[0].macFilterProfileId = -1;
  EXPECT_EQ(AccessOf(state, state.networks[0]), (AccessPlan{AccessPlan::Rule::Everybody, {}}));
}

TEST(AccessOfANetwork, IsForNobodyWhenNoDeviceIsAllowed) {
  State state = StateWithProfiles();
  state.macFilterProfiles[0] = {1, "Nobody", MACFilterAction::Allow, {}};
  EXPECT_EQ(AccessOf(state, state.networks[0]), (AccessPlan{AccessPlan::Rule::OnlyListed, {}}));
}

}  // namespace

}  // namespace TALO::Wifid
