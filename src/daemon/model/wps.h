#pragma once

#include "client/network_records.h"
#include "client/service_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <optional>
#include <string>
#include <vector>

/// The rules of WPS. A session belongs to one BSS; at most one runs.
namespace TALO::Wifid {

/// Where WPS can be opened and what it depends on.
struct WPSPicture {
  const State& state;
  const Capabilities& capabilities;
  const std::vector<LiveRadio>& live;
  const std::optional<std::string>& session;  ///< the interface whose session runs
};

/// The 2.4 GHz BSS of the activated network with the lowest ID. NotFound when no network is activated, or
/// when the router has no 2.4 GHz radio.
Result<Wifi::NetworkRadioPair> DefaultWPSTarget(const State& state, const Capabilities& capabilities);

/// The interface on which a session may be opened now. What it says when it may not, the first that holds:
/// NotFound for an unknown network, what ResolveRadios says for the radio, InvalidArgument for `SmartConnect`
/// on a router with more than one radio (push button is for one BSS), Busy while a session runs, NotAllowed
/// for a hidden network or one whose security mode is not WPA2 personal capable (PersonalWPA2,
/// PersonalWPAMixed, PersonalWPA2_3Mixed), RadioFailed for a BSS that is not up.
Result<std::string> WPSInterface(const WPSPicture& picture, const Wifi::NetworkRadioPair& target);

/// NotFound for an interface that is no network's, NotAllowed when no session runs on it.
Result<void> CheckWPSConnected(const WPSPicture& picture, const std::string& interface);

/// NotFound for an interface that is no network's; InvalidArgument for an SSID outside the limits of the
/// field, for a mode that is not the name of `Disabled`, `OWE` or one from PersonalWPA to
/// PersonalWPA2_3Mixed, for a key with one of the first two, and for one outside the limits of the field with
/// any other.
Result<void> CheckRegistrarInput(const State& state, const Capabilities& capabilities,
                                 const Wifi::WPS_ERConfigInput& input);

}  // namespace TALO::Wifid
