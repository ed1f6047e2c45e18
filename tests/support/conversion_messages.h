#pragma once

#include <string>

namespace TALO::Tool {

/// What is printed of a word that names no value of an enumeration. `type` is its mangled name.
inline std::string unknownWord(const std::string& type, const std::string& word) {
  return "Failed to execute command: Failed to convert string to enum class [" + type + "]: " + word +
         ": Runtime error\n";
}

/// What is printed of a value that has no name.
inline std::string unnamedValue(const std::string& type, const std::string& value) {
  return "Failed to execute command: Failed to Convert enum class [" + type + "] to string: " + value +
         ": Runtime error\n";
}

constexpr const char* kRadioFrequencyType = "N4TALO4Wifi4Util14RadioFrequencyE";
constexpr const char* kSecurityModeType = "N4TALO4Wifi4Util12SecurityModeE";
constexpr const char* kScanTypeType = "N4TALO4Wifi4Util8ScanTypeE";
constexpr const char* kSupportedModelType = "N4TALO4Wifi4Util14SupportedModelE";
constexpr const char* kMACFilterActionType = "N4TALO4Wifi15MACFilterActionE";

/// Names of the radios in another form than exactly theirs.
constexpr const char* kNoRadios[] = {"band5ghz",   "BAND5GHZ", "Band5GHz ", " Band5GHz", "Band5GH",
                                     "Band5GHz_3", "5",        "2",         "-1",        "",
                                     "%s%n%d",     "\xff",     "error",     "Band5GHz,"};

/// What a MAC address cannot be made from.
constexpr const char* kNoMACAddresses[] = {"",
                                           "02",
                                           "02:00:00:00:00",
                                           "02:00:00:00:00:0a:0b",
                                           "02:00:00:00:00:0g",
                                           "02:00:00:00:00:a",
                                           "02:00:00-00:00:0a",
                                           "02-00-00-00-00:0a",
                                           "020000000000a",
                                           "02000000000a",
                                           "02:00:00:00:00:0a ",
                                           " 02:00:00:00:00:0a",
                                           "02.00.00.00.00.0a",
                                           "0x:00:00:00:00:0a",
                                           "+2:00:00:00:00:0a",
                                           "any",
                                           "\xff:00:00:00:00:0a",
                                           "%s"};

}  // namespace TALO::Tool
