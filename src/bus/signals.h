#pragma once

// The signals of com.talo.Wifi1.General: one row each, naming the signal and its values. What the daemon
// offers and sends is made from these rows.

#include "bus/codec.h"
#include "bus/fixed_string.h"

#include <string>

namespace TALO::Wifi::Bus {

/// `ValueNames` are separated by blanks; they appear in the introspection.
template <FixedString Name, FixedString ValueNames, typename... Values>
struct Signal {
  static constexpr auto name = Name;
  static constexpr auto valueNames = ValueNames;
  using ValuesCodec = ArgumentsCodec<Values...>;
};

using NetworksChangedSignal = Signal<"NetworksChanged", "">;
using StationConnectedSignal =
    Signal<"StationConnected", "address networkId interface", Util::MACAddress, int, std::string>;
using StationDisconnectedSignal = Signal<"StationDisconnected", "address networkId interface reason",
                                         Util::MACAddress, int, std::string, std::string>;
using RadioStateChangedSignal = Signal<"RadioStateChanged", "radio up", Util::RadioFrequency, bool>;
using WPSFinishedSignal = Signal<"WPSFinished", "interface outcome", std::string, std::string>;

/// Calls `visit` with a value of each row's type.
template <typename Visit>
constexpr void ForEachSignal(Visit visit) {
  visit(NetworksChangedSignal{});
  visit(StationConnectedSignal{});
  visit(StationDisconnectedSignal{});
  visit(RadioStateChangedSignal{});
  visit(WPSFinishedSignal{});
}

}  // namespace TALO::Wifi::Bus
