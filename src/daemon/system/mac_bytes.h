#pragma once

#include "values/mac_address.h"

#include <string>

namespace TALO::Wifid {

/// The address of six bytes; none for any other number of them.
Wifi::Util::MACAddress MACOf(const std::string& bytes);

/// Its six bytes.
std::string BytesOf(const Wifi::Util::MACAddress& address);

}  // namespace TALO::Wifid
