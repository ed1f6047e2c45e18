#include "daemon/model/radios.h"

#include "daemon/model/text.h"

#include <algorithm>
#include <set>

namespace TALO::Wifid {

using enum RadioFrequency;

namespace {

bool HasRadio(const Capabilities& capabilities, RadioFrequency radio) {
  return std::ranges::find(capabilities.radios, radio, &RadioCapability::radio) != capabilities.radios.end();
}

/// The bands that a node of the mesh may ask for.
std::set<RadioFrequency> BandsInMesh(const State& state, const Capabilities& capabilities) {
  if (state.mesh.models.empty()) {
    return {Band2_4GHz, Band5GHz, Band5GHz_1, Band5GHz_2};
  }
  std::set<RadioFrequency> bands;
  for (const RadioCapability& radio : capabilities.radios) {
    bands.insert(radio.radio);
  }
  for (const SupportedModel model : state.mesh.models) {
    for (const RadioFrequency radio : RadiosOf(model)) {
      bands.insert(radio);
    }
  }
  return bands;
}

RadioFrequency ServingRadio(RadioFrequency asked, bool triBand, bool swapped) {
  if (asked == Band2_4GHz) {
    return Band2_4GHz;
  }
  if (!triBand) {
    return Band5GHz;
  }
  // The lower radio is the fronthaul, unless swapped.
  const bool lower = (asked == Band5GHz_2) == swapped;
  return lower ? Band5GHz_1 : Band5GHz_2;
}

}  // namespace

bool IsTriBand(const Capabilities& capabilities) { return HasRadio(capabilities, Band5GHz_2); }

std::map<RadioFrequency, RadioFrequency> ConversionMap(const State& state, const Capabilities& capabilities) {
  std::map<RadioFrequency, RadioFrequency> map;
  for (const RadioFrequency asked : BandsInMesh(state, capabilities)) {
    const RadioFrequency serving = ServingRadio(asked, IsTriBand(capabilities), state.backhaulSwapped);
    if (HasRadio(capabilities, serving)) {
      map[asked] = serving;
    }
  }
  return map;
}

Result<std::vector<RadioFrequency>> ResolveRadios(const State& state, const Capabilities& capabilities,
                                                  RadioFrequency asked) {
  if (!IsReal(asked)) {
    return Refusal{ErrorCode::InvalidArgument, "the radio " + NameOrNumber(asked) + " does not exist"};
  }
  std::vector<RadioFrequency> radios;
  if (asked != SmartConnect) {
    radios.push_back(ServingRadio(asked, IsTriBand(capabilities), state.backhaulSwapped));
    if (!HasRadio(capabilities, radios.back())) {
      return Refusal{ErrorCode::NotSupported,
                     "no radio of this router serves the band " + NameOrNumber(asked)};
    }
    return radios;
  }
  for (const RadioCapability& radio : capabilities.radios) {
    radios.push_back(radio.radio);
  }
  return radios;
}

}  // namespace TALO::Wifid
