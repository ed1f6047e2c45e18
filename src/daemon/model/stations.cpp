#include "daemon/model/stations.h"

#include "daemon/model/country.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"
#include "values/enum_names.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace TALO::Wifid {

namespace {

enum class Needs { Nothing, Passphrase, Identity, Refused };

Needs NeedsOf(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::Disabled:
    case SecurityMode::OWE:
      return Needs::Nothing;
    case SecurityMode::PersonalWPA:
    case SecurityMode::PersonalWPA2:
    case SecurityMode::PersonalWPA3:
    case SecurityMode::PersonalWPAMixed:
    case SecurityMode::PersonalWPA2_3Mixed:
      return Needs::Passphrase;
    case SecurityMode::EnterpriseWPA:
    case SecurityMode::EnterpriseWPA2:
    case SecurityMode::EnterpriseWPA3:
    case SecurityMode::EnterpriseWPAMixed:
      return Needs::Identity;
    case SecurityMode::Error:
    case SecurityMode::WEP:
      break;
  }
  return Needs::Refused;
}

/// What fits the attribute in which an authentication server is sent either of them.
constexpr std::size_t kMaximumIdentityBytes = 253;

Refusal Invalid(std::string sentence) { return {ErrorCode::InvalidArgument, std::move(sentence)}; }

Result<void> CheckIdentity(const Wifi::StationSetting& setting) {
  if (setting.user.empty() || setting.password.empty()) {
    return Invalid("the security mode " + NameOrNumber(setting.securityMode) +
                   " needs a user and a password");
  }
  if (setting.user.size() > kMaximumIdentityBytes || setting.password.size() > kMaximumIdentityBytes) {
    return Invalid("the user has " + std::to_string(setting.user.size()) + " bytes and the password " +
                   std::to_string(setting.password.size()) + ", neither may have more than " +
                   std::to_string(kMaximumIdentityBytes));
  }
  return {};
}

Result<void> CheckCredentials(const Wifi::StationSetting& setting) {
  const std::string mode = NameOrNumber(setting.securityMode);
  const Needs needs = NeedsOf(setting.securityMode);
  if (needs == Needs::Refused) {
    return Invalid("a station cannot use the security mode " + mode);
  }
  if (needs != Needs::Identity && !setting.user.empty()) {
    return Invalid("the user " + Quoted(setting.user) + " is for enterprise modes, not for " + mode);
  }
  switch (needs) {
    case Needs::Nothing:
      return setting.password.empty() ? Result<void>()
                                      : Invalid("the security mode " + mode + " takes no password");
    case Needs::Passphrase:
      return CheckPassphrase(setting.password);
    case Needs::Identity:
      return CheckIdentity(setting);
    case Needs::Refused:
      break;
  }
  return {};
}

bool IsGroupAddress(const Wifi::Util::MACAddress& address) {
  // The lowest bit of the first byte, that is of its second digit.
  constexpr std::string_view kOddDigits = "13579bdf";
  return kOddDigits.find(address.ToString()[1]) != std::string_view::npos;
}

}  // namespace

std::string StationInterface(const RadioCapability& radio) { return radio.interface + "sta"; }

std::string BackhaulStationInterface(const RadioCapability& radio) { return radio.interface + "bhs"; }

Result<void> CheckStation(const Wifi::StationSetting& setting) {
  if (setting.enable || !setting.essid.empty()) {
    if (auto check = CheckSSID(setting.essid, "essid"); !check.Succeeded()) {
      return check;
    }
  }
  if (auto check = CheckCredentials(setting); !check.Succeeded()) {
    return check;
  }
  if (IsGroupAddress(setting.bssid)) {
    return Invalid("the BSSID " + setting.bssid.ToString() + " is a group address");
  }
  return {};
}

Result<Change<void>> ModifyStation(const State& state, const Capabilities& capabilities,
                                   const Wifi::StationSetting& setting) {
  if (std::ranges::find(capabilities.radios, setting.radio, &RadioCapability::radio) ==
      capabilities.radios.end()) {
    return Invalid("this router has no radio " + NameOrNumber(setting.radio) + " for a station");
  }
  if (auto check = CheckStation(setting); !check.Succeeded()) {
    return check.Why();
  }
  if (auto check = CheckIsWorking(state, capabilities, setting.radio); setting.enable && !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  const auto station = std::ranges::find(change.state.stations, setting.radio, &Wifi::StationSetting::radio);
  if (station == change.state.stations.end()) {
    change.state.stations.push_back(setting);
  } else {
    *station = setting;
  }
  return change;
}

}  // namespace TALO::Wifid
