#include "bus/errors.h"

#include "bus/names.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <system_error>

namespace TALO::Wifi::Bus {

namespace {

using talo::dbus::DbusError;

struct RefusalRow {
  ErrorCode code;
  const char* name;
};

constexpr std::array<RefusalRow, 9> kRefusals = {{
    {ErrorCode::InvalidArgument, "com.talo.Wifi1.Error.InvalidArgument"},
    {ErrorCode::NotFound, "com.talo.Wifi1.Error.NotFound"},
    {ErrorCode::AlreadyExists, "com.talo.Wifi1.Error.AlreadyExists"},
    {ErrorCode::NotSupported, "com.talo.Wifi1.Error.NotSupported"},
    {ErrorCode::NotAllowed, "com.talo.Wifi1.Error.NotAllowed"},
    {ErrorCode::Busy, "com.talo.Wifi1.Error.Busy"},
    {ErrorCode::LimitReached, "com.talo.Wifi1.Error.LimitReached"},
    {ErrorCode::RadioFailed, "com.talo.Wifi1.Error.RadioFailed"},
    {ErrorCode::StorageFailed, "com.talo.Wifi1.Error.StorageFailed"},
}};

/// Errors of the bus that have a meaning of their own. The sentence is followed by the detail in parentheses.
struct BusErrorRow {
  std::string_view name;
  ErrorCode code;
  const char* sentence;
  enum Detail { Operation, BusName } detail;
};

constexpr const char* kGone = "the wifi daemon went away before it answered";
constexpr const char* kDenied = "the bus does not let this user talk to the wifi daemon";
constexpr const char* kUnknown = "the wifi daemon does not know the operation; is it of another version?";

constexpr std::array<BusErrorRow, 16> kBusErrors = {{
    {SD_BUS_ERROR_SERVICE_UNKNOWN, ErrorCode::DaemonNotRunning, "the wifi daemon is not running",
     BusErrorRow::BusName},
    {SD_BUS_ERROR_NAME_HAS_NO_OWNER, ErrorCode::DaemonNotRunning, "the wifi daemon is not running",
     BusErrorRow::BusName},
    {SD_BUS_ERROR_ACCESS_DENIED, ErrorCode::AccessDenied, kDenied, BusErrorRow::Operation},
    {SD_BUS_ERROR_AUTH_FAILED, ErrorCode::AccessDenied, kDenied, BusErrorRow::Operation},
    {SD_BUS_ERROR_INTERACTIVE_AUTHORIZATION_REQUIRED, ErrorCode::AccessDenied, kDenied,
     BusErrorRow::Operation},
    // The bus answers NoReply when the daemon disconnects; a deadline that passes here is a Timeout.
    {SD_BUS_ERROR_NO_REPLY, ErrorCode::DaemonGone, kGone, BusErrorRow::Operation},
    {SD_BUS_ERROR_DISCONNECTED, ErrorCode::DaemonGone, "the bus went away before the wifi daemon answered",
     BusErrorRow::Operation},
    {"System.Error.ECONNRESET", ErrorCode::DaemonGone, "the bus went away before the wifi daemon answered",
     BusErrorRow::Operation},
    {"System.Error.EPIPE", ErrorCode::DaemonGone, "the bus went away before the wifi daemon answered",
     BusErrorRow::Operation},
    // Of a call on a connection that was lost before.
    {"System.Error.ENOTCONN", ErrorCode::DaemonGone, "the bus went away before the wifi daemon answered",
     BusErrorRow::Operation},
    {SD_BUS_ERROR_TIMEOUT, ErrorCode::NoAnswer, "the wifi daemon did not answer in time",
     BusErrorRow::Operation},
    {SD_BUS_ERROR_UNKNOWN_METHOD, ErrorCode::UnknownOperation, kUnknown, BusErrorRow::Operation},
    {SD_BUS_ERROR_UNKNOWN_INTERFACE, ErrorCode::UnknownOperation, kUnknown, BusErrorRow::Operation},
    {SD_BUS_ERROR_UNKNOWN_OBJECT, ErrorCode::UnknownOperation, kUnknown, BusErrorRow::Operation},
    {SD_BUS_ERROR_UNKNOWN_PROPERTY, ErrorCode::UnknownOperation, kUnknown, BusErrorRow::Operation},
    {SD_BUS_ERROR_INVALID_ARGS, ErrorCode::UnknownOperation,
     "the wifi daemon takes other arguments; is it of another version?", BusErrorRow::Operation},
}};

/// Whether the bus, or systemd on its behalf, answers that it tried to start the daemon and failed.
bool IsFailedStart(std::string_view name) {
  return name.starts_with("org.freedesktop.DBus.Error.Spawn.") ||
         name == "org.freedesktop.DBus.Error.TimedOut" || name.starts_with("org.freedesktop.systemd1.");
}

}  // namespace

const char* ErrorNameOf(ErrorCode refusal) {
  const auto row = std::ranges::find(kRefusals, refusal, &RefusalRow::code);
  return row == kRefusals.end() ? nullptr : row->name;
}

std::vector<ErrorCode> Refusals() {
  std::vector<ErrorCode> codes;
  std::ranges::transform(kRefusals, std::back_inserter(codes), &RefusalRow::code);
  return codes;
}

void ThrowCallError(const sd_bus_error& error, const char* operation) {
  const std::string_view name = error.name != nullptr ? error.name : "";
  const std::string words =
      error.message != nullptr && *error.message != '\0' ? error.message : std::string(name);

  for (const RefusalRow& row : kRefusals) {
    if (name == row.name) {
      throw WifiException(make_error_code(row.code), words);
    }
  }
  for (const BusErrorRow& row : kBusErrors) {
    if (name == row.name) {
      const std::string detail =
          row.detail == BusErrorRow::BusName ? std::string(kBusName) + " has no owner" : operation;
      throw DbusError(make_error_code(row.code), std::string(row.sentence) + " (" + detail + ")");
    }
  }
  if (IsFailedStart(name)) {
    throw DbusError(make_error_code(ErrorCode::DaemonNotStarted),
                    "the bus could not start the wifi daemon (" + words + ")");
  }
  throw DbusError(make_error_code(ErrorCode::Unexpected), std::string(operation) +
                                                              " failed on the bus: " + std::string(name) +
                                                              (words == name ? "" : ": " + words));
}

void ThrowBusUnavailable(int error) {
  const std::string reason = std::generic_category().message(error);
  throw DbusError(make_error_code(ErrorCode::BusUnavailable),
                  "the system bus cannot be reached (" + reason + ")");
}

void ThrowBadReply(const char* operation, const std::string& reason) {
  throw DbusError(
      make_error_code(ErrorCode::BadReply),
      "the answer of the wifi daemon to " + std::string(operation) + " cannot be read (" + reason + ")");
}

}  // namespace TALO::Wifi::Bus
