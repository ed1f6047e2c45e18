#include "support/command_test.h"

#include "values/errors.h"

#include <new>
#include <stdexcept>
#include <system_error>

namespace TALO::Tool {

using talo::dbus::DbusError;
using Wifi::ErrorCode;
using Wifi::RuntimeError;
using Wifi::WifiException;

const std::vector<ClientFailure>& clientFailures() {
  static const std::vector<ClientFailure> failures = {
      {"WifiException", std::make_exception_ptr(WifiException(ErrorCode::NotFound, "Network 7")),
       "Failed to execute command: Network 7: Not found\n"},
      {"RuntimeError", std::make_exception_ptr(RuntimeError("Radio %d of %s", 3, "all")),
       "Failed to execute command: Radio 3 of all: Runtime error\n"},
      {"DbusError", std::make_exception_ptr(DbusError(ErrorCode::DaemonNotRunning, "No owner")),
       "No owner: Daemon not running\n"},
      {"std::system_error", std::make_exception_ptr(std::system_error(ErrorCode::Busy, "Elsewhere")),
       "Elsewhere: Busy\n"},
      {"std::invalid_argument", std::make_exception_ptr(std::invalid_argument("no such thing")),
       "no such thing\n"},
      {"std::bad_alloc", std::make_exception_ptr(std::bad_alloc()), "std::bad_alloc\n"},
      {"no std::exception", std::make_exception_ptr(42), "Unexpected error occurred, should be fixed.\n"},
  };
  return failures;
}

}  // namespace TALO::Tool
