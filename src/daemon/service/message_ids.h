#pragma once

/// What the journal knows the important lines by, whatever their text. The catalog in packaging/systemd
/// explains each. Part of the daemon's interface: never give one to another line.
namespace TALO::Wifid::MessageIds {

inline constexpr const char* kServes = "b9ee2095941e46938a57037c12c849c1";
inline constexpr const char* kEnds = "6e1e0fca070645f59533cb13400a42a5";
inline constexpr const char* kNotRestored = "90472c9554cf4c45a153695077f719c2";
inline constexpr const char* kNotStored = "5280e4ac2b26468295a407bb97e912ee";
inline constexpr const char* kNotApplied = "0bcc578737c04b9b805516cc03bfe75b";
inline constexpr const char* kNotUndone = "40b981f5735f40c8841a31a2d29e4925";
inline constexpr const char* kRadioState = "2ab109aa926b4d518b66ab37319b6f5d";

}  // namespace TALO::Wifid::MessageIds
