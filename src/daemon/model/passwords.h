#pragma once

#include "client/network_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Password rotation.
namespace TALO::Wifid {

/// Gives that many bytes of the best randomness there is.
using DrawBytes = std::function<std::string(std::size_t)>;

/// 20 letters and digits that are not mistaken for one another (no 0 O o, 1 l I i, 5 S s, 2 Z z, 8 B, u v,
/// and the like), each equally likely: bytes that would favour some are thrown away.
std::string DrawPassphrase(const DrawBytes& draw);

/// Whether a network of this mode has a passphrase.
bool HasPassphrase(SecurityMode mode);

/// Gives a network `passphrase` on one radio, or on all for `SmartConnect`, which forgets what single radios
/// had. NotFound for an unknown network, what ResolveRadios says for the radio, NotSupported for a network
/// whose security mode has no passphrase, InvalidArgument for a passphrase outside the limits of the field.
Result<Change<void>> RotatePassword(const State& state, const Capabilities& capabilities,
                                    const Wifi::NetworkRadioPair& target, const std::string& passphrase,
                                    std::int64_t now);

/// The passphrase of a network on a radio, and when it was set.
const std::string& PassphraseOn(const NetworkState& network, RadioFrequency radio);
std::int64_t PassphraseChangedAt(const NetworkState& network, RadioFrequency radio);

}  // namespace TALO::Wifid
