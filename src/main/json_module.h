#pragma once

#include "commands/styled_json.h"

#include <cstddef>
#include <string>

/// The tool's JSON in a module of its own, which the program fetches when its first record is to be printed.
///
/// The program has its C++ runtime linked in, the module shares the JSON library's. So nothing crosses but
/// plain data that both were built with by one compiler, and no exception.
namespace TALO::Tool {

inline constexpr const char* kJSONModule = "talowifitool-json.so";
inline constexpr const char* kJSONModuleEntry = "talowifitoolWriteStyledJSON";

/// Takes the text piece by piece.
using TextSink = void(const char* text, std::size_t size) noexcept;

/// Gives the styled JSON to `sink` and returns true; or false, and the reason. Records are read only by a
/// module of the `version` that the program is of: others may have them differ.
using JSONModuleEntry = bool(const char* version, Printable what, TextSink* sink,
                             std::string& reason) noexcept;

}  // namespace TALO::Tool
