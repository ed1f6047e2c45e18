#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <string>

namespace TALO::Wifid {

/// The version of the state's form that this daemon writes, and the newest that it reads.
inline constexpr int kStateVersion = 1;

/// The state as JSON text: an object of its members with "version" beside them. Enumerations stand by name,
/// bytes and secrets as hexadecimal digits under the member's name and "Hex". The exact form of
/// daemon/json/record_json.h; never fails but for want of memory.
std::string EncodeState(const State& state);

/// StorageFailed, with a sentence that says where, for a text that EncodeState did not make: one that is not
/// JSON, of another version, with a member missing, unknown or of the wrong type.
Result<State> DecodeState(const std::string& text);

}  // namespace TALO::Wifid
