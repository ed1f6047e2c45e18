#pragma once

#include "values/export.h"

#include <string>
#include <system_error>

namespace talo::dbus {

/// The daemon could not be asked, or its answer could not be used: no bus, no daemon, no answer, access
/// denied, a reply that does not decode. Its code() says which, see TALO::Wifi::ErrorCode.
class TALO_WIFI_API DbusError : public std::system_error {
 public:
  using std::system_error::system_error;
};

}  // namespace talo::dbus

namespace TALO::Wifi {

/// Why an operation failed. The values are part of the library's interface: append, never renumber.
enum class ErrorCode : int {
  RuntimeError = 2,  ///< a failure inside the calling program, see RuntimeError

  // Refusals of the daemon: the request arrived and nothing was changed.
  InvalidArgument = 10,
  NotFound,
  AlreadyExists,
  NotSupported,
  NotAllowed,
  Busy,
  LimitReached,
  RadioFailed,
  StorageFailed,

  // Ways in which the daemon cannot be reached or understood.
  BusUnavailable = 30,  ///< the message bus cannot be reached
  DaemonNotRunning,     ///< nobody owns the daemon's bus name
  DaemonNotStarted,     ///< the bus tried to start the daemon and failed
  AccessDenied,         ///< the bus does not let this caller talk to the daemon
  DaemonGone,           ///< daemon or bus went away before the answer came
  NoAnswer,             ///< the deadline passed
  BadReply,             ///< the answer does not decode
  UnknownOperation,     ///< the running daemon does not know the operation
  Unexpected,           ///< any other error of the bus
};

/// The category of every error of this library; its codes are the values of ErrorCode.
class TALO_WIFI_API ErrorCategory final : public std::error_category {
 public:
  /// The one instance; it lives as long as the program.
  static const ErrorCategory& get() noexcept;

  /// "talowifi"
  const char* name() const noexcept override;

  /// A short phrase for the code, "Unknown error" for a number that is not an ErrorCode.
  std::string message(int code) const override;
};

TALO_WIFI_API std::error_code make_error_code(ErrorCode code) noexcept;

/// The daemon refused the request; nothing was changed. The message names the object and the value.
class TALO_WIFI_API WifiException : public talo::dbus::DbusError {
 public:
  using talo::dbus::DbusError::DbusError;
};

namespace Internal {
/// Formats like vsnprintf; "Error but failed to format string" when that fails.
TALO_WIFI_API std::string FormatMessage(const char* format, ...);
}  // namespace Internal

/// A failure found by the calling program itself, with a message formatted like printf and the code
/// ErrorCode::RuntimeError.
class TALO_WIFI_API RuntimeError : public WifiException {
 public:
  /// The caller owes a format that fits the arguments, as for printf.
  template <typename... Arguments>
  explicit RuntimeError(const char* format, Arguments... arguments)
      : WifiException(make_error_code(ErrorCode::RuntimeError),
                      Internal::FormatMessage(format, arguments...)) {}
};

}  // namespace TALO::Wifi

template <>
struct std::is_error_code_enum<TALO::Wifi::ErrorCode> : std::true_type {};
