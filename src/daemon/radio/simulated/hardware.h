#pragma once

#include "daemon/model/capabilities.h"

#include <optional>

/// The radios that simulated routers have.
namespace TALO::Wifid {

/// The radios of a model: 16 networks each, addresses of their own from 02:00:00:00:00:00 on.
Capabilities MakeSimulatedCapabilities(SupportedModel model);

/// Whether any radio of any model can be on the channel.
bool IsChannel(int channel);

/// Whether two radios, or a radio and a band, lie in the same band: all of 5 GHz is one.
bool IsSameBand(RadioFrequency a, RadioFrequency b);

/// The radio that a scenario means: the one of that name, else the first of the same band.
std::optional<RadioFrequency> RadioMeant(const Capabilities& capabilities, RadioFrequency named);

/// The width that a radio has on a channel when it wants `width`, 0 standing for its widest: as much of it as
/// the radio and the country have around the channel, 20 MHz at least.
int WidthOn(int channel, int width, const RadioCapability& radio, CountryCode country);

/// Whether transmissions on one channel disturb the other.
bool DoOverlap(int channel, int width, int otherChannel, int otherWidth);

}  // namespace TALO::Wifid
