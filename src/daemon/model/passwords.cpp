#include "daemon/model/passwords.h"

#include "daemon/model/networks.h"
#include "daemon/model/radios.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"

#include <algorithm>
#include <string_view>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kPassphraseLength = 20;

/// Of characters that are alike, at most one is here: whole pairs where neither is clear alone (0 O, 1 l, 5
/// S), else the lower-case one of a letter whose two cases differ in size only.
constexpr std::string_view kClearCharacters = "34679ADEFHLMNRTacdefhjkmnprtwxy";

void SetOnRadio(NetworkState& network, RadioPassphrase own) {
  auto& owns = network.radioPassphrases;
  const auto place = std::ranges::lower_bound(owns, own.radio, {}, &RadioPassphrase::radio);
  if (place != owns.end() && place->radio == own.radio) {
    *place = std::move(own);
  } else {
    owns.insert(place, std::move(own));
  }
}

const RadioPassphrase* FindOwn(const NetworkState& network, RadioFrequency radio) {
  const auto own = std::ranges::find(network.radioPassphrases, radio, &RadioPassphrase::radio);
  return own != network.radioPassphrases.end() ? &*own : nullptr;
}

}  // namespace

bool HasPassphrase(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::PersonalWPA:
    case SecurityMode::PersonalWPA2:
    case SecurityMode::PersonalWPA3:
    case SecurityMode::PersonalWPAMixed:
    case SecurityMode::PersonalWPA2_3Mixed:
      return true;
    case SecurityMode::Error:
    case SecurityMode::Disabled:
    case SecurityMode::OWE:
    case SecurityMode::WEP:
    case SecurityMode::EnterpriseWPA:
    case SecurityMode::EnterpriseWPA2:
    case SecurityMode::EnterpriseWPA3:
    case SecurityMode::EnterpriseWPAMixed:
      break;
  }
  return false;
}

std::string DrawPassphrase(const DrawBytes& draw) {
  // The bytes from here on would give the first characters one chance more than the others.
  constexpr std::size_t kFair = 256 - 256 % kClearCharacters.size();
  std::string passphrase;
  while (passphrase.size() < kPassphraseLength) {
    for (const char c : draw(kPassphraseLength - passphrase.size())) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte < kFair) {
        passphrase += kClearCharacters[byte % kClearCharacters.size()];
      }
    }
  }
  return passphrase;
}

Result<Change<void>> RotatePassword(const State& state, const Capabilities& capabilities,
                                    const Wifi::NetworkRadioPair& target, const std::string& passphrase,
                                    std::int64_t now) {
  const auto known = FindNetwork(state, target.id);
  if (!known.Succeeded()) {
    return known.Why();
  }
  const auto radios = ResolveRadios(state, capabilities, target.radio);
  if (!radios.Succeeded()) {
    return radios.Why();
  }
  if (!HasPassphrase(known.Value()->securityMode)) {
    return Refusal{ErrorCode::NotSupported,
                   "the network " + std::to_string(target.id) + " has the security mode " +
                       NameOrNumber(known.Value()->securityMode) + ", which has no passphrase"};
  }
  if (auto check = CheckPassphrase(passphrase); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  NetworkState& network = *std::ranges::find(change.state.networks, target.id, &NetworkState::id);
  if (target.radio == RadioFrequency::SmartConnect) {
    network.passphrase = passphrase;
    network.passphraseChangedAt = now;
    network.radioPassphrases.clear();
    return change;
  }
  for (const RadioFrequency radio : radios.Value()) {
    SetOnRadio(network, {radio, passphrase, now});
  }
  return change;
}

const std::string& PassphraseOn(const NetworkState& network, RadioFrequency radio) {
  const RadioPassphrase* own = FindOwn(network, radio);
  return own != nullptr ? own->passphrase : network.passphrase;
}

std::int64_t PassphraseChangedAt(const NetworkState& network, RadioFrequency radio) {
  const RadioPassphrase* own = FindOwn(network, radio);
  return own != nullptr ? own->passphraseChangedAt : network.passphraseChangedAt;
}

}  // namespace TALO::Wifid
