#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace TALO::Wifid {

/// Bytes between quotes for a sentence: readable where they are, "\xNN" for control characters, line
/// separators and what is not UTF-8, so that a sentence stays one line whatever an SSID holds.
std::string Quoted(std::string_view bytes);

/// A point in time as in 2026-01-31T12:00:00Z.
std::string FormatTime(std::int64_t secondsSince1970);

}  // namespace TALO::Wifid
