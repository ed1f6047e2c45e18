#include "daemon/model/country.h"

#include "daemon/model/text.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace TALO::Wifid {

using enum CountryCode;

namespace {

/// First and last channel of a stretch without gaps.
struct Range {
  int first;
  int last;
};

constexpr int kStep2_4GHz = 1;
constexpr int kStep5GHz = 4;             ///< channels of 20 MHz lie four numbers apart
constexpr int kFirstUpperChannel = 100;  ///< where the part of the upper 5 GHz radio begins

/// Countries with the same rules; all in 20 MHz channels.
struct Domain {
  std::set<CountryCode> countries;
  std::vector<Range> band2_4GHz;
  std::vector<Range> band5GHz;
};

const std::vector<Domain>& Domains() {
  static const std::vector<Domain> kDomains = {
      // Europe
      {{AT, BE, BG, CH, CY, CZ, DE, DK, EE, ES, FI, FR, GB, GR, HR, HU,
        IE, IS, IT, LI, LT, LU, LV, MT, NL, NO, PL, PT, RO, SE, SI, SK},
       {{1, 13}},
       {{36, 64}, {100, 140}}},
      // United States
      {{US}, {{1, 11}}, {{36, 64}, {100, 144}, {149, 165}}},
      // Canada, without the channels of the weather radars
      {{CA}, {{1, 11}}, {{36, 64}, {100, 116}, {132, 144}, {149, 165}}},
      // Australia, without the channels of the weather radars
      {{AU}, {{1, 13}}, {{36, 64}, {100, 116}, {132, 140}, {149, 165}}},
      // Korea, New Zealand, Singapore
      {{KR, NZ, SG}, {{1, 13}}, {{36, 64}, {100, 140}, {149, 165}}},
      // Japan
      {{JP}, {{1, 13}}, {{36, 64}, {100, 144}}},
      // China
      {{CN}, {{1, 13}}, {{36, 64}, {149, 165}}},
  };
  return kDomains;
}

const Domain* FindDomain(CountryCode country) {
  const auto domain = std::ranges::find_if(
      Domains(), [country](const Domain& candidate) { return candidate.countries.contains(country); });
  return domain != Domains().end() ? &*domain : nullptr;
}

std::vector<int> ChannelsOf(const std::vector<Range>& ranges, int step) {
  std::vector<int> channels;
  for (const Range& range : ranges) {
    for (int channel = range.first; channel <= range.last; channel += step) {
      channels.push_back(channel);
    }
  }
  return channels;
}

std::string TextOf(const std::vector<Range>& ranges) {
  std::string text;
  for (const Range& range : ranges) {
    text += text.empty() ? "" : ", ";
    text += std::to_string(range.first) + "-" + std::to_string(range.last);
  }
  return text;
}

std::string ChannelPlan(const Domain& domain) {
  return "2.4 GHz: " + TextOf(domain.band2_4GHz) + "; 5 GHz: " + TextOf(domain.band5GHz);
}

bool IsImmutable(SupportedModel model) {
  return model == SupportedModel::Birch200 || model == SupportedModel::Dune40;
}

/// The codes that a model is certified for.
std::set<CountryCode> CodesOf(SupportedModel model) {
  std::set<CountryCode> codes;
  switch (model) {
    case SupportedModel::Alder100:
    case SupportedModel::Cedar300:
      for (const Domain& domain : Domains()) {
        codes.insert(domain.countries.begin(), domain.countries.end());
      }
      if (model == SupportedModel::Alder100) {
        codes.erase(CN);  // leaves the upper radio no channel that its filters pass
      }
      return codes;
    case SupportedModel::Birch200:
      return {DE};
    case SupportedModel::Dune40:
      return {DE, US};
    case SupportedModel::Error:
      break;
  }
  return {};
}

/// `SetCountryCode` for one radio.
Result<RadioState> MoveRadio(RadioState radio, const Capabilities& capabilities, CountryCode country) {
  const auto capability = std::ranges::find(capabilities.radios, radio.radio, &RadioCapability::radio);
  RadioCapability hardware;
  hardware.radio = radio.radio;
  if (capability != capabilities.radios.end()) {
    hardware = *capability;
  }
  if (radio.enable && ChannelsIn(country, hardware).empty()) {
    return Refusal{ErrorCode::NotSupported, WhyOff(country, hardware)};
  }
  const std::vector<int> usable = UsableChannels(country, hardware);
  if (radio.channel != kAutomaticChannel && !std::ranges::binary_search(usable, radio.channel)) {
    radio.channel = usable.empty() ? kAutomaticChannel : usable.front();
  }
  return radio;
}

}  // namespace

std::vector<int> AllowedChannels(CountryCode country, RadioFrequency radio) {
  const Domain* domain = FindDomain(country);
  if (domain == nullptr) {
    return {};
  }
  std::vector<int> channels;
  switch (radio) {
    case RadioFrequency::Band2_4GHz:
      return ChannelsOf(domain->band2_4GHz, kStep2_4GHz);
    case RadioFrequency::Band5GHz:
      return ChannelsOf(domain->band5GHz, kStep5GHz);
    case RadioFrequency::Band5GHz_1:
      channels = ChannelsOf(domain->band5GHz, kStep5GHz);
      std::erase_if(channels, [](int channel) { return channel >= kFirstUpperChannel; });
      return channels;
    case RadioFrequency::Band5GHz_2:
      channels = ChannelsOf(domain->band5GHz, kStep5GHz);
      std::erase_if(channels, [](int channel) { return channel < kFirstUpperChannel; });
      return channels;
    case RadioFrequency::Error:
    case RadioFrequency::SmartConnect:
      break;
  }
  return {};
}

std::vector<int> ChannelsIn(CountryCode country, const RadioCapability& radio) {
  std::vector<int> channels;
  std::ranges::set_intersection(AllowedChannels(country, radio.radio), radio.channels,
                                std::back_inserter(channels));
  return channels;
}

std::vector<int> UsableChannels(CountryCode country, const RadioCapability& radio) {
  constexpr int kFirstWithRadars = 52;
  constexpr int kLastWithRadars = 144;
  std::vector<int> usable = ChannelsIn(country, radio);
  if (!radio.findsRadars) {
    std::erase_if(usable,
                  [](int channel) { return channel >= kFirstWithRadars && channel <= kLastWithRadars; });
  }
  return usable;
}

std::string WhyOff(CountryCode country, const RadioCapability& radio) {
  const std::string name = "the radio " + NameOrNumber(radio.radio);
  if (ChannelsIn(country, radio).empty()) {
    return name + " has no channel that the country " + NameOrNumber(country) + " allows";
  }
  return UsableChannels(country, radio).empty()
             ? name + " cannot look out for radars (DFS), which all of its channels take in the country " +
                   NameOrNumber(country)
             : "";
}

Result<void> CheckIsWorking(const State& state, const Capabilities& capabilities, RadioFrequency radio) {
  const auto capability = std::ranges::find(capabilities.radios, radio, &RadioCapability::radio);
  const std::string why =
      capability != capabilities.radios.end() ? WhyOff(state.country, *capability) : std::string();
  return why.empty() ? Result<void>() : Result<void>(Refusal{ErrorCode::NotSupported, why});
}

Wifi::CountryCodeCapability CountryCapability(SupportedModel model) {
  Wifi::CountryCodeCapability capability;
  capability.immutable = IsImmutable(model);
  for (const CountryCode code : CodesOf(model)) {
    capability.codes[code] = ChannelPlan(*FindDomain(code));
  }
  return capability;
}

Result<Change<void>> SetCountryCode(const State& state, const Capabilities& capabilities,
                                    CountryCode country) {
  const std::string code = NameOrNumber(country);
  const std::string model = NameOrNumber(capabilities.model);
  if (country == MaxCountryCode || Wifi::Util::FindEnumName(country).empty()) {
    return Refusal{ErrorCode::InvalidArgument, "the country code " + code + " does not exist"};
  }
  if (IsImmutable(capabilities.model) && country != state.country) {
    return Refusal{ErrorCode::NotAllowed, "the country code of the model " + model + " is set for life to " +
                                              NameOrNumber(state.country) + ", it cannot become " + code};
  }
  if (!CodesOf(capabilities.model).contains(country)) {
    return Refusal{ErrorCode::InvalidArgument,
                   "the country code " + code + " is not among those of the model " + model};
  }
  Change<void> change{state};
  change.state.country = country;
  for (RadioState& radio : change.state.radios) {
    const auto moved = MoveRadio(radio, capabilities, country);
    if (!moved.Succeeded()) {
      return moved.Why();
    }
    radio = moved.Value();
  }
  return change;
}

Result<Wifi::CountryCodeCapability> RemoteCountryCapability(const std::vector<MeshNode>& nodes,
                                                            const std::string& serial, SupportedModel model) {
  if (!IsReal(model)) {
    return Refusal{ErrorCode::InvalidArgument, "the model " + NameOrNumber(model) + " does not exist"};
  }
  if (nodes.empty()) {
    return CountryCapability(model);
  }
  const auto node = std::ranges::find(nodes, serial, &MeshNode::serial);
  if (node == nodes.end()) {
    return Refusal{ErrorCode::NotFound, "there is no node " + Quoted(serial) + " in the mesh"};
  }
  if (node->model != model) {
    return Refusal{ErrorCode::InvalidArgument, "the node " + Quoted(serial) + " is of model " +
                                                   NameOrNumber(node->model) + ", not " +
                                                   NameOrNumber(model)};
  }
  return CountryCapability(model);
}

}  // namespace TALO::Wifid
