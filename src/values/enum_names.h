#pragma once

#include "values/enums.h"
#include "values/export.h"

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

namespace TALO::Wifi::Util {

/// The eight enumerations that have names on the command line and in answers.
template <typename E>
concept NamedEnum = std::same_as<E, RadioFrequency> || std::same_as<E, SecurityMode> ||
    std::same_as<E, ScanType> || std::same_as<E, MACFilterAction> || std::same_as<E, SupportedModel> ||
    std::same_as<E, ScheduleMode> || std::same_as<E, LogLevel> || std::same_as<E, CountryCode>;

/// The value whose identifier is exactly `name` (case counts, nothing is trimmed). Sentinels have names too,
/// so "Error" converts where the enumeration has it. Throws RuntimeError for any other text.
template <NamedEnum E>
TALO_WIFI_API E EnumFromName(const std::string& name);

/// The identifier of `value`. Throws RuntimeError for a value that has none.
template <NamedEnum E>
TALO_WIFI_API std::string EnumNameOf(E value);

/// The identifier of `value`, empty for a value that has none. Never throws.
template <NamedEnum E>
TALO_WIFI_API std::string_view FindEnumName(E value) noexcept;

/// The identifiers that can be meant, in ascending order: all but the sentinels and `MaxCountryCode`.
template <NamedEnum E>
TALO_WIFI_API std::vector<std::string> EnumWords();

}  // namespace TALO::Wifi::Util
