#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace TALO::Wifi::Bus {

/// One operation as other programs on the bus see it.
struct WireRow {
  std::string interface;
  std::string name;
  std::string arguments;  ///< signature
  std::string result;     ///< signature
  bool sensitive = false;

  bool operator==(const WireRow&) const = default;
};

void PrintTo(const WireRow& row, std::ostream* out);

/// All operations, interface by interface, each in the order of its client. Written by hand from the
/// clients' declarations: a change here breaks every daemon and client in the field.
const std::vector<WireRow>& WireTable();

/// The row of an operation; empty where there is none.
WireRow FindWireRow(std::string_view interface, std::string_view name);

}  // namespace TALO::Wifi::Bus
