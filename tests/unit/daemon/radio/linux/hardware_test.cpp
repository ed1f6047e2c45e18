#include "daemon/radio/linux/hardware.h"

#include "daemon/radio/linux/control/hostapd_files.h"
#include "support/machine/fake_kernel.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;
using enum RadioFrequency;

Wiphy Only2_4GHz(int index) {
  Wiphy wiphy = MakeWiphy(index);
  wiphy.band5GHz.reset();
  return wiphy;
}

Wiphy Only5GHz(int index) {
  Wiphy wiphy = MakeWiphy(index);
  wiphy.band2_4GHz.reset();
  return wiphy;
}

WirelessInterface MakeInterface(const std::string& name, int wiphy, const std::string& address) {
  return {name, 1, wiphy, InterfaceType::Station, MACAddress(address), 0, 0};
}

/// The phys of the radios in their order.
std::vector<std::string> PhysOf(const Result<std::vector<RadioHardware>>& assigned) {
  std::vector<std::string> phys;
  for (const RadioHardware& each : ValueOf(assigned)) {
    phys.push_back(each.phy);
  }
  return phys;
}

TEST(RadioMap, IsReadFromPairs) {
  EXPECT_EQ(RadioMap(), ValueOf(ReadRadioMap("", SupportedModel::Cedar300)));
  EXPECT_EQ((RadioMap{{"phy0", Band5GHz}, {"phy7", Band2_4GHz}}),
            ValueOf(ReadRadioMap("phy0=Band5GHz,phy7=Band2_4GHz", SupportedModel::Cedar300)));
}

TEST(RadioMap, RefusesWhatIsNoMap) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"phy0", "\"phy0\" is not as in \"phy0=Band2_4GHz\""},
      {"=Band5GHz", "\"=Band5GHz\" is not as in \"phy0=Band2_4GHz\""},
      {"phy0=Band5GHz,", "nothing stands behind its last comma"},
      {",", "\"\" is not as in \"phy0=Band2_4GHz\""},
      {"phy0=Band5GHz,,", "\"\" is not as in \"phy0=Band2_4GHz\""},
      {"phy0=Band5GHz_1", "the model Cedar300 has no radio \"Band5GHz_1\""},
      {"phy0=SmartConnect", "the model Cedar300 has no radio \"SmartConnect\""},
      {"phy0=", "the model Cedar300 has no radio \"\""},
      {"phy0=Band5GHz,phy0=Band2_4GHz", "\"phy0=Band2_4GHz\" names what was named before"},
      {"phy0=Band5GHz,phy1=Band5GHz", "\"phy1=Band5GHz\" names what was named before"},
  };
  for (const auto& [text, why] : cases) {
    EXPECT_EQ((Refusal{ErrorCode::InvalidArgument, "the radios cannot be \"" + text + "\": " + why}),
              WhyNot(ReadRadioMap(text, SupportedModel::Cedar300)));
  }
}

TEST(Hardware, IsAssignedByBandAndLeavesAPhyForEachOfTheOthers) {
  const SupportedModel dual = SupportedModel::Cedar300;
  const SupportedModel tri = SupportedModel::Alder100;
  using Phys = std::vector<std::string>;
  EXPECT_EQ((Phys{"phy0", "phy1"}), PhysOf(AssignHardware(dual, {MakeWiphy(0), MakeWiphy(1)}, {}, {})));
  EXPECT_EQ((Phys{"phy1", "phy0"}), PhysOf(AssignHardware(dual, {MakeWiphy(0), Only2_4GHz(1)}, {}, {})));
  EXPECT_EQ((Phys{"phy1", "phy0"}), PhysOf(AssignHardware(dual, {Only5GHz(0), Only2_4GHz(1)}, {}, {})));
  EXPECT_EQ((Phys{"phy2", "phy0", "phy1"}),
            PhysOf(AssignHardware(tri, {MakeWiphy(0), MakeWiphy(1), Only2_4GHz(2)}, {}, {})));
}

TEST(Hardware, FollowsTheMap) {
  using Phys = std::vector<std::string>;
  const std::vector<Wiphy> wiphys = {MakeWiphy(0), MakeWiphy(1), MakeWiphy(2)};
  EXPECT_EQ((Phys{"phy2", "phy0"}),
            PhysOf(AssignHardware(SupportedModel::Cedar300, wiphys, {}, {{"phy2", Band2_4GHz}})));
  EXPECT_EQ((Phys{"phy1", "phy0"}), PhysOf(AssignHardware(SupportedModel::Cedar300, wiphys, {},
                                                          {{"phy0", Band5GHz}, {"phy1", Band2_4GHz}})));
}

TEST(Hardware, IsRefusedWhereItDoesNotCarryTheModel) {
  Wiphy noAccessPoints = MakeWiphy(1);
  noAccessPoints.maximumAccessPoints = 0;
  const std::vector<std::tuple<std::vector<Wiphy>, RadioMap, std::string>> cases = {
      {{},
       {},
       "the 0 phys of this machine do not carry the radios of the model Cedar300: Band2_4GHz, Band5GHz"},
      {{Only5GHz(0), Only5GHz(1)},
       {},
       "the 2 phys of this machine do not carry the radios of the model Cedar300: Band2_4GHz, Band5GHz"},
      {{MakeWiphy(0), MakeWiphy(1)},
       {{"phy9", Band5GHz}},
       "the radio Band5GHz cannot be on phy9, which is not there"},
      {{MakeWiphy(0), Only2_4GHz(1)},
       {{"phy1", Band5GHz}},
       "the radio Band5GHz cannot be on phy1, which does not have its channels"},
      {{MakeWiphy(0), noAccessPoints},
       {},
       "the radio Band5GHz cannot be on phy1, which carries no access points"},
  };
  for (const auto& [wiphys, map, sentence] : cases) {
    EXPECT_EQ((Refusal{ErrorCode::RadioFailed, sentence}),
              WhyNot(AssignHardware(SupportedModel::Cedar300, wiphys, {}, map)));
  }
}

TEST(Hardware, SaysWhatARadioCanDo) {
  const std::vector<WirelessInterface> interfaces = {
      MakeInterface("wlan0_1", 0, "00:11:22:33:44:00"), MakeInterface("wlp3s0", 0, "00:11:22:33:44:00"),
      MakeInterface("wlan-with-a-long", 1, "00:11:22:33:44:01")};
  const auto hardware = ValueOf(
      AssignHardware(SupportedModel::Alder100, {MakeWiphy(0), MakeWiphy(1), MakeWiphy(2)}, interfaces, {}));
  ASSERT_EQ(3U, hardware.size());
  EXPECT_EQ("wlp3s0", hardware[0].capability.interface);
  EXPECT_FALSE(hardware[0].makesInterface);
  // A name that is too long for what is added to it, and none at all.
  EXPECT_EQ("radio1", hardware[1].capability.interface);
  EXPECT_EQ("radio2", hardware[2].capability.interface);
  EXPECT_TRUE(hardware[1].makesInterface && hardware[2].makesInterface);
  EXPECT_EQ(14U, hardware[0].capability.channels.size());
  EXPECT_EQ((std::vector<int>{36, 40, 44, 48, 52, 56, 60, 64}), hardware[1].capability.channels);
  EXPECT_EQ(100, hardware[2].capability.channels.front());
  EXPECT_EQ(165, hardware[2].capability.channels.back());
  EXPECT_EQ(40, hardware[0].capability.maximumChannelWidth);
  EXPECT_EQ(80, hardware[1].capability.maximumChannelWidth);
  EXPECT_EQ(6, hardware[0].capability.maximumBSSs);
  EXPECT_FALSE(hardware[0].capability.limitsBroadcasts);
  EXPECT_FALSE(hardware[0].capability.findsRadars);
}

TEST(Hardware, NamesAChannelOnceThatIsAtTwoFrequencies) {
  Wiphy wiphy = Only5GHz(1);
  wiphy.band5GHz->channels = {{184, 4920, false, false, false, 20, 20},
                              {36, 5180, false, false, false, 20, 20},
                              {184, 5920, true, false, false, 20, 20}};
  const auto hardware = ValueOf(AssignHardware(SupportedModel::Cedar300, {Only2_4GHz(0), wiphy}, {}, {}));
  ASSERT_EQ(2U, hardware.size());
  EXPECT_EQ((std::vector<int>{36, 184}), hardware[1].capability.channels);
}

TEST(Hardware, KnowsAnInterfaceThatADaemonBeforeMade) {
  const std::vector<Wiphy> wiphys = {MakeWiphy(0), MakeWiphy(1)};
  const SupportedModel model = SupportedModel::Cedar300;
  const auto first =
      ValueOf(AssignHardware(model, wiphys, {MakeInterface("wlan0", 0, "00:11:22:33:44:00")}, {}));
  EXPECT_EQ("radio1", first.at(1).capability.interface);
  std::vector<WirelessInterface> interfaces = {MakeInterface("wlan0", 0, "00:11:22:33:44:00"),
                                               MakeInterface("radio1", 1, first[1].ownAddress.ToString())};
  EXPECT_EQ(first, ValueOf(AssignHardware(model, wiphys, interfaces, {})));
  // The machine's own may have that name, too.
  interfaces[1].address = MACAddress("00:11:22:33:44:01");
  const auto other = ValueOf(AssignHardware(model, wiphys, interfaces, {}));
  EXPECT_EQ("radio1", other.at(1).capability.interface);
  EXPECT_FALSE(other[1].makesInterface);
}

TEST(Hardware, HasNamesThatWhatIsAddedToThemFits) {
  const auto assign = [](const std::string& name) {
    const std::vector<WirelessInterface> interfaces = {MakeInterface(name, 0, "00:11:22:33:44:00")};
    return ValueOf(AssignHardware(SupportedModel::Cedar300, {MakeWiphy(0), MakeWiphy(1)}, interfaces, {}))
        .at(0)
        .capability;
  };
  const RadioCapability longest = assign("wlp12s0");
  EXPECT_EQ("wlp12s0", longest.interface);
  EXPECT_EQ("radio0", assign("wlp12s0f").interface);
  // The kernel's longest has 15 characters; the longest is that of a node's, which hostapd makes.
  EXPECT_EQ(15U, (BSSInterface(longest, kBackhaulSlot) + ".sta" + std::to_string(kMostNodes)).size());
  EXPECT_GE(15U, BSSInterface(longest, longest.maximumBSSs).size());
}

TEST(Hardware, CarriesAsManyNetworksAsAccessPointsAreLeft) {
  for (const auto& [accessPoints, networks] :
       std::map<int, int>{{1, 1}, {2, 1}, {3, 1}, {4, 2}, {18, 16}, {64, 16}}) {
    Wiphy wiphy = MakeWiphy(0);
    wiphy.maximumAccessPoints = accessPoints;
    const auto hardware = ValueOf(AssignHardware(SupportedModel::Cedar300, {wiphy, MakeWiphy(1)}, {}, {}));
    EXPECT_EQ(networks, hardware.at(0).capability.maximumBSSs) << accessPoints;
  }
}

TEST(Hardware, GivesEveryInterfaceAnAddressOfItsOwn) {
  // The makers' addresses count up, down, or are all alike.
  for (const int step : {1, -1, 0}) {
    std::vector<WirelessInterface> interfaces;
    std::vector<Wiphy> wiphys;
    for (int i = 0; i < 3; ++i) {
      wiphys.push_back(MakeWiphy(i));
      wiphys.back().maximumAccessPoints = 64;
      interfaces.push_back(
          MakeInterface("wlan" + std::to_string(i), i, "02:11:22:33:44:1" + std::to_string(5 + i * step)));
    }
    std::set<MACAddress> addresses;
    std::size_t count = 0;
    for (const RadioHardware& each :
         ValueOf(AssignHardware(SupportedModel::Alder100, wiphys, interfaces, {}))) {
      for (int slot = kBackhaulSlot; slot <= each.capability.maximumBSSs; ++slot) {
        addresses.insert(BSSAddress(each.capability, slot));
        ++count;
      }
      for (const MACAddress& address :
           {each.stationAddress, each.backhaulStationAddress, each.listenerAddress}) {
        addresses.insert(address);
        ++count;
      }
      EXPECT_EQ(interfaces[static_cast<std::size_t>(each.wiphy)].address, each.ownAddress);
    }
    EXPECT_EQ(count, addresses.size()) << step;
    // The radio's own has its maker's address, also when it is made again.
    for (const WirelessInterface& interface : interfaces) {
      EXPECT_FALSE(addresses.contains(interface.address));
    }
    for (const MACAddress& address : addresses) {
      const int first = std::stoi(address.ToString().substr(0, 2), nullptr, 16);
      EXPECT_EQ(2, first & 3) << address.ToString();
    }
  }
}

}  // namespace

}  // namespace TALO::Wifid
