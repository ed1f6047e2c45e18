#pragma once

#include "bus/operations.h"

#include <cstddef>

namespace TALO::Fuzz {

inline constexpr std::size_t kOperations =
    Wifi::Bus::General::size + Wifi::Bus::Mesh::size + Wifi::Bus::Topology::size + Wifi::Bus::Tool::size;

/// Calls `visit` with the interface and the row of the operation of that index.
template <typename Visit>
void VisitOperation(std::size_t index, Visit visit) {
  const auto visitIn = [&](auto interface) {
    interface.ForEach([&](auto row) {
      if (index-- == 0) {
        visit(interface, row);
      }
    });
  };
  visitIn(Wifi::Bus::General{});
  visitIn(Wifi::Bus::Mesh{});
  visitIn(Wifi::Bus::Topology{});
  visitIn(Wifi::Bus::Tool{});
}

}  // namespace TALO::Fuzz
