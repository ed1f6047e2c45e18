#pragma once

#include "values/enum_names.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace TALO::Wifid {

/// Bytes between quotes for a sentence: readable where they are, "\xNN" for control characters, line
/// separators and what is not UTF-8, so that a sentence stays one line whatever an SSID holds.
std::string Quoted(std::string_view bytes);

/// The name of an enumeration's value, or its number where it has none.
template <Wifi::Util::NamedEnum E>
std::string NameOrNumber(E value) {
  const std::string_view name = Wifi::Util::FindEnumName(value);
  return name.empty() ? std::to_string(static_cast<int>(value)) : std::string(name);
}

/// Whether a value has a name and is not the sentinel.
template <Wifi::Util::NamedEnum E>
bool IsReal(E value) {
  return value != E::Error && !Wifi::Util::FindEnumName(value).empty();
}

/// A point in time as in 2026-01-31T12:00:00Z.
std::string FormatTime(std::int64_t secondsSince1970);

}  // namespace TALO::Wifid
