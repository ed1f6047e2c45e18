#pragma once

#include "client/records.h"

#include <iosfwd>
#include <variant>
#include <vector>

namespace TALO::Tool {

/// What a command prints as JSON: one record, or all of a list. It belongs to the command.
using Printable =
    std::variant<const Wifi::BackhaulSetting*, const Wifi::BackhaulSTASetting*, const Wifi::MACFilterGlobal*,
                 const std::vector<Wifi::BackhaulSTAStatus>*, const std::vector<Wifi::DeviceInfo>*,
                 const std::vector<Wifi::MACFilterProfile>*, const std::vector<Wifi::NetworkSetting>*,
                 const std::vector<Wifi::RadioSetting>*, const std::vector<Wifi::RadioStatus>*,
                 const std::vector<Wifi::RadioStatusSimple>*, const std::vector<Wifi::ScanResult>*,
                 const std::vector<Wifi::StationSetting>*, const std::vector<Wifi::StationStatus>*>;

/// Writes the record's object, or the array of the list's objects in their order, as Json::Value's
/// toStyledString() has it, the library's own line end included. The text never stands in memory as a whole.
void writeStyledJSON(Printable what, std::ostream& output);

/// The same on standard output.
///
/// The program does not start with the JSON library in it, as that takes longer than all the rest of a run:
/// there the definition is one that fetches the library first (main/json_module.cpp), and throws
/// std::runtime_error where it is missing. Others link commands/linked_json.cpp.
void printStyledJSON(Printable what);

}  // namespace TALO::Tool
