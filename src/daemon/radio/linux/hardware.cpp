#include "daemon/radio/linux/hardware.h"

#include "daemon/model/text.h"

#include <algorithm>
#include <optional>
#include <set>
#include <span>
#include <sstream>
#include <string_view>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

/// More are of no use, and beacons of more fill the air.
constexpr int kMaximumNetworks = 16;
/// Access points that carry no network: the one that holds the radio, and the backhaul's.
constexpr int kOtherAccessPoints = 2;
constexpr int kFirstUpperChannel = 100;  ///< where the part of the upper 5 GHz radio begins
/// The longest name of an interface is 15 characters, and of what is added behind a radio's own this is the
/// longest, see kMostNodes.
constexpr std::size_t kLongestInterface = 15 - std::string_view("_0.sta99").size();

Refusal Failure(const std::string& sentence) { return {ErrorCode::RadioFailed, sentence}; }

std::vector<int> ChannelsOf(const WiphyBand& band, RadioFrequency radio) {
  // Two of the 5 GHz band, 1 GHz apart, may have one number.
  std::set<int> channels;
  for (const WiphyChannel& channel : band.channels) {
    const bool upper = channel.number >= kFirstUpperChannel;
    if ((radio == RadioFrequency::Band5GHz_1 && upper) || (radio == RadioFrequency::Band5GHz_2 && !upper)) {
      continue;
    }
    channels.insert(channel.number);
  }
  return {channels.begin(), channels.end()};
}

/// A locally administered address of its own for each radio, so that the blocks that begin there keep apart
/// whatever the makers' addresses are. `kind` tells a radio's block from the addresses of its stations.
MACAddress LocalAddress(const MACAddress& base, std::size_t radio, std::size_t kind) {
  constexpr std::size_t kLocal = 0x02;
  constexpr std::size_t kKinds = 5;
  constexpr std::size_t kFirstFree = 4;  // the two lowest bits have a meaning
  std::ostringstream first;
  first.width(2);
  first.fill('0');
  first << std::hex << ((kLocal + kFirstFree * (1 + radio * kKinds + kind)) & 0xfeU);
  return MACAddress(first.str() + base.ToString().substr(2));
}

/// The phy's own interface. One with a name that is too long for what is added to it is left alone.
const WirelessInterface* FindInterface(const std::vector<WirelessInterface>& interfaces, const Wiphy& wiphy) {
  const auto found = std::ranges::find_if(interfaces, [&wiphy](const WirelessInterface& interface) {
    return interface.wiphy == wiphy.index && interface.name.size() <= kLongestInterface &&
           (interface.type == InterfaceType::Station || interface.type == InterfaceType::AccessPoint) &&
           interface.name.find('_') == std::string::npos;
  });
  return found != interfaces.end() ? &*found : nullptr;
}

/// The maker's address is on some interface of the phy; without any it does not matter.
MACAddress BaseAddress(const std::vector<WirelessInterface>& interfaces, const Wiphy& wiphy) {
  const auto found = std::ranges::find(interfaces, wiphy.index, &WirelessInterface::wiphy);
  return found != interfaces.end() ? found->address : MACAddress("00:00:00:00:00:00");
}

std::string MadeInterface(const Wiphy& wiphy) { return "radio" + std::to_string(wiphy.index); }

bool CanCarry(const Wiphy& wiphy, RadioFrequency radio) {
  const WiphyBand* band = BandOf(wiphy, radio);
  return band != nullptr && !ChannelsOf(*band, radio).empty();
}

using Choice = std::map<RadioFrequency, const Wiphy*>;

/// Gives each radio that has none the first free phy that can carry it and leaves one for each after it.
bool Choose(std::span<const RadioFrequency> radios, const std::vector<Wiphy>& wiphys, Choice& choice) {
  if (radios.empty()) {
    return true;
  }
  const RadioFrequency radio = radios.front();
  if (choice.contains(radio)) {
    return Choose(radios.subspan(1), wiphys, choice);
  }
  for (const Wiphy& wiphy : wiphys) {
    const bool taken = std::ranges::any_of(choice, [&](const auto& each) { return each.second == &wiphy; });
    if (!taken && CanCarry(wiphy, radio)) {
      choice[radio] = &wiphy;
      if (Choose(radios.subspan(1), wiphys, choice)) {
        return true;
      }
      choice.erase(radio);
    }
  }
  return false;
}

std::string ListOf(const std::vector<RadioFrequency>& radios) {
  std::string list;
  for (const RadioFrequency radio : radios) {
    list += (list.empty() ? "" : ", ") + NameOrNumber(radio);
  }
  return list;
}

Result<RadioHardware> MakeHardware(RadioFrequency radio, std::size_t index, const Wiphy& wiphy,
                                   const std::vector<WirelessInterface>& interfaces) {
  const std::string name = "the radio " + NameOrNumber(radio);
  if (!CanCarry(wiphy, radio)) {
    return Failure(name + " cannot be on " + wiphy.name + ", which does not have its channels");
  }
  if (wiphy.maximumAccessPoints < 1) {
    return Failure(name + " cannot be on " + wiphy.name + ", which carries no access points");
  }
  const MACAddress base = BaseAddress(interfaces, wiphy);
  const WirelessInterface* own = FindInterface(interfaces, wiphy);
  RadioHardware hardware;
  hardware.capability.radio = radio;
  hardware.capability.interface = own != nullptr ? own->name : MadeInterface(wiphy);
  hardware.capability.address = LocalAddress(base, index, 0);
  hardware.capability.maximumBSSs =
      std::clamp(wiphy.maximumAccessPoints - kOtherAccessPoints, 1, kMaximumNetworks);
  const WiphyBand& band = *BandOf(wiphy, radio);
  hardware.capability.channels = ChannelsOf(band, radio);
  hardware.capability.maximumChannelWidth = band.maximumWidth;
  hardware.capability.limitsBroadcasts = false;
  hardware.capability.findsRadars = false;
  hardware.wiphy = wiphy.index;
  hardware.phy = wiphy.name;
  hardware.maximumAccessPoints = wiphy.maximumAccessPoints;
  hardware.maximumStations = wiphy.maximumStations;
  hardware.maximumChannels = wiphy.maximumChannels;
  hardware.fourAddress = wiphy.fourAddress;
  // One of a daemon before, which was killed, has the same address again.
  const MACAddress made = LocalAddress(base, index, 1);
  hardware.makesInterface = own == nullptr || (own->name == MadeInterface(wiphy) && own->address == made);
  hardware.ownAddress = hardware.makesInterface ? made : own->address;
  hardware.stationAddress = LocalAddress(base, index, 2);
  hardware.backhaulStationAddress = LocalAddress(base, index, 3);
  hardware.listenerAddress = LocalAddress(base, index, 4);
  return hardware;
}

}  // namespace

bool IsOf5GHz(RadioFrequency radio) { return radio != RadioFrequency::Band2_4GHz; }

const WiphyBand* BandOf(const Wiphy& wiphy, RadioFrequency radio) {
  const std::optional<WiphyBand>& band = IsOf5GHz(radio) ? wiphy.band5GHz : wiphy.band2_4GHz;
  return band ? &*band : nullptr;
}

Result<RadioMap> ReadRadioMap(const std::string& text, SupportedModel model) {
  const auto refuse = [&text](const std::string& why) {
    return Refusal{ErrorCode::InvalidArgument, "the radios cannot be " + Quoted(text) + ": " + why};
  };
  const std::vector<RadioFrequency> radios = RadiosOf(model);
  RadioMap map;
  std::set<RadioFrequency> named;
  std::istringstream entries(text);
  for (std::string entry; std::getline(entries, entry, ',');) {
    const std::size_t equals = entry.find('=');
    if (equals == 0 || equals == std::string::npos) {
      return refuse(Quoted(entry) + " is not as in \"phy0=Band2_4GHz\"");
    }
    const std::string phy = entry.substr(0, equals);
    const std::string word = entry.substr(equals + 1);
    const auto radio = std::ranges::find(radios, word, NameOrNumber<RadioFrequency>);
    if (radio == radios.end()) {
      return refuse("the model " + NameOrNumber(model) + " has no radio " + Quoted(word));
    }
    if (!named.insert(*radio).second || !map.emplace(phy, *radio).second) {
      return refuse(Quoted(entry) + " names what was named before");
    }
  }
  // The last entry ends at the comma, and no empty one follows.
  return text.ends_with(',') ? Result<RadioMap>(refuse("nothing stands behind its last comma")) : map;
}

Result<std::vector<RadioHardware>> AssignHardware(SupportedModel model, const std::vector<Wiphy>& wiphys,
                                                  const std::vector<WirelessInterface>& interfaces,
                                                  const RadioMap& map) {
  Choice choice;
  for (const auto& [phy, radio] : map) {
    const auto wiphy = std::ranges::find(wiphys, phy, &Wiphy::name);
    if (wiphy == wiphys.end()) {
      return Failure("the radio " + NameOrNumber(radio) + " cannot be on " + phy + ", which is not there");
    }
    choice[radio] = &*wiphy;
  }
  const std::vector<RadioFrequency> radios = RadiosOf(model);
  if (!Choose(radios, wiphys, choice)) {
    return Failure("the " + std::to_string(wiphys.size()) +
                   " phys of this machine do not carry the radios of the model " + NameOrNumber(model) +
                   ": " + ListOf(radios));
  }
  std::vector<RadioHardware> hardware;
  for (const RadioFrequency radio : radios) {
    auto made = MakeHardware(radio, hardware.size(), *choice.at(radio), interfaces);
    if (!made.Succeeded()) {
      return made.Why();
    }
    hardware.push_back(std::move(made.Value()));
  }
  return hardware;
}

}  // namespace TALO::Wifid
