#pragma once

#include "reference/bus_document.h"

#include <string>
#include <vector>

namespace TALO::Reference {

/// A refusal of the daemon as it goes over the bus.
struct BusError {
  std::string name;  ///< as in "com.talo.Wifi1.Error.NotFound"
  std::string text;  ///< as in "Not found"
};

/// All of them, in the order of their codes.
std::vector<BusError> ReadBusErrors();

/// com.talo.Wifi1(7), from its source. There @enumerations is replaced by the names and numbers of all
/// enumerations, @interface NAME by the interface with all of its members, and @error NAME by the error; the
/// source goes on with what that means. It has all of them in their
/// order. Throws SourceError where one is missing, or is not there.
std::string BusPage(const std::string& source, const std::vector<BusInterfaceDocument>& interfaces,
                    const std::vector<BusError>& errors);

}  // namespace TALO::Reference
