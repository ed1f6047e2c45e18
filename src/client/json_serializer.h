#pragma once

#include "client/records.h"
#include "values/export.h"

#include <json/value.h>

#include <map>
#include <set>
#include <type_traits>
#include <vector>

namespace TALO::Wifi::Daemon {

namespace IMPL {

template <typename T>
struct IsContainer : std::false_type {};
template <typename... Parameters>
struct IsContainer<std::vector<Parameters...>> : std::true_type {};
template <typename... Parameters>
struct IsContainer<std::set<Parameters...>> : std::true_type {};
template <typename... Parameters>
struct IsContainer<std::map<Parameters...>> : std::true_type {};

}  // namespace IMPL

/// Turns records into JSON objects. Keys are the members' names. Enumerations are printed by name, a value
/// without one by its number; MAC addresses as aa:bb:cc:dd:ee:ff. A member that holds raw bytes appears
/// twice: under its name in readable form (what is not UTF-8 becomes U+FFFD), and with "Hex" behind its name
/// exactly.
class TALO_WIFI_API JsonSerializer {
 public:
  /// For every record that a client returns. Never fails but for want of memory.
  template <typename Record>
  static std::enable_if_t<!IMPL::IsContainer<std::decay_t<Record>>::value, Json::Value> Serialize(
      const Record& record);
};

}  // namespace TALO::Wifi::Daemon
