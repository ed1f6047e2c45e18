#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <string>

namespace TALO::Wifid {

/// The version of the state's form that this daemon writes, and the newest that it reads.
inline constexpr int kStateVersion = 2;

/// The state as JSON text: an object of its members with "version" and "checksum" beside them. Enumerations
/// stand by name, bytes and secrets as hexadecimal digits under the member's name and "Hex". The exact form
/// of daemon/json/record_json.h; never fails but for want of memory.
std::string EncodeState(const State& state);

/// The state that a text of this version or an earlier one stands for. NotSupported for a newer version.
/// StorageFailed, with a sentence that says where, for a text that EncodeState never made: one that is not
/// JSON, does not fit its checksum, or has a member missing, unknown or of the wrong type. A text without a
/// checksum is taken as it is.
Result<State> DecodeState(const std::string& text);

}  // namespace TALO::Wifid
