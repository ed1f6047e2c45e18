#pragma once

#include "client/service_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/live.h"
#include "daemon/model/result.h"

#include <string>
#include <vector>

/// Country codes: what each model may use, and what a country allows.
namespace TALO::Wifid {

/// The channels of 20 MHz that a country allows on a radio's band, ascending: `Band5GHz_1` has the part of
/// the 5 GHz band below channel 100, `Band5GHz_2` the rest, `Band5GHz` all of it. Empty for a country whose
/// rules are not known, and for what is not one radio.
std::vector<int> AllowedChannels(CountryCode country, RadioFrequency radio);

/// Those of them that the radio has.
std::vector<int> ChannelsIn(CountryCode country, const RadioCapability& radio);

/// Those of them that the radio can use: all, or those that take no looking out for radars. These are the
/// same everywhere.
std::vector<int> UsableChannels(CountryCode country, const RadioCapability& radio);

/// Why a radio has no channel that it can use in a country, as a sentence; empty where it has. Such a radio
/// is off, whatever is set, until the country is another.
std::string WhyOff(CountryCode country, const RadioCapability& radio);

/// NotSupported for a radio that is off for that reason.
Result<void> CheckIsWorking(const State& state, const Capabilities& capabilities, RadioFrequency radio);

/// The codes of a model, each with its channel plan as in "2.4 GHz: 1-13; 5 GHz: 36-64, 100-140", and whether
/// the code can be changed: Alder100 and Cedar300 can, Birch200 and Dune40 come set for life. Nothing for
/// `Error`.
Wifi::CountryCodeCapability CountryCapability(SupportedModel model);

/// The code and, where a radio's channel is not usable there, the lowest one that is; an automatic one stays.
/// InvalidArgument for `MaxCountryCode`, a number without a name, and a code that is not the model's;
/// NotAllowed on a model whose code cannot be changed, unless it is the code in force; NotSupported where the
/// country allows an enabled radio no channel that it has. A disabled one is set to automatic then, and so is
/// one that cannot find the radars that all of its channels there take looking out for.
Result<Change<void>> SetCountryCode(const State& state, const Capabilities& capabilities,
                                    CountryCode country);

/// The capability of another node. InvalidArgument for `Error` as model, and for a model that is not the
/// known node's; NotFound for a serial number that is not among `nodes`, unless no mesh is known.
Result<Wifi::CountryCodeCapability> RemoteCountryCapability(const std::vector<MeshNode>& nodes,
                                                            const std::string& serial, SupportedModel model);

}  // namespace TALO::Wifid
