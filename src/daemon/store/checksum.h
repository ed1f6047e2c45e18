#pragma once

#include <string>

namespace TALO::Wifid {

/// The key under which a state's text has its checksum, and what stands there until it is known.
inline constexpr const char* kChecksumKey = "checksum";
inline constexpr const char* kNoChecksum = "00000000";

/// Writes the checksum into a text that has kNoChecksum in its place: the CRC-32 of the text as it is, in
/// hexadecimal digits. It is one of bytes, not of values: whatever writes JSON may change how it does.
void PutChecksum(std::string& text);

/// Whether no byte of the text has changed since PutChecksum wrote this checksum into it.
bool FitsChecksum(std::string text, const std::string& checksum);

}  // namespace TALO::Wifid
