#pragma once

#include "client/records.h"
#include "commands/styled_json.h"

#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

/// The forms of answer that several commands share.
namespace TALO::Tool {

/// The styled JSON of one record and a line end.
template <typename Record>
void printRecord(const Record& record) {
  printStyledJSON(&record);
  std::cout << std::endl;
}

/// The styled JSON array of the records in the order given, "[]" for none, and a line end. Nothing is written
/// before the whole array is built.
template <typename Record>
void printRecords(const std::vector<Record>& records) {
  printStyledJSON(&records);
  std::cout << std::endl;
}

/// A line for each network, a line for each of its interfaces, and an empty line.
void printNetworkInterfaces(const std::map<int, std::set<std::string>>& interfaces);

/// A heading, a line for each radio with its interface, and an empty line.
void printRadioInterfaces(const std::map<Wifi::Util::RadioFrequency, std::string>& interfaces);

}  // namespace TALO::Tool
