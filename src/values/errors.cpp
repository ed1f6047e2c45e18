#include "values/errors.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace TALO::Wifi {

namespace {

// No default: the compiler finds a code without a text.
const char* TextOf(ErrorCode code) {
  switch (code) {
    case ErrorCode::RuntimeError:
      return "Runtime error";
    case ErrorCode::InvalidArgument:
      return "Invalid argument";
    case ErrorCode::NotFound:
      return "Not found";
    case ErrorCode::AlreadyExists:
      return "Already exists";
    case ErrorCode::NotSupported:
      return "Not supported";
    case ErrorCode::NotAllowed:
      return "Not allowed";
    case ErrorCode::Busy:
      return "Busy";
    case ErrorCode::LimitReached:
      return "Limit reached";
    case ErrorCode::RadioFailed:
      return "Radio failed";
    case ErrorCode::StorageFailed:
      return "Storage failed";
    case ErrorCode::BusUnavailable:
      return "Bus unavailable";
    case ErrorCode::DaemonNotRunning:
      return "Daemon not running";
    case ErrorCode::DaemonNotStarted:
      return "Daemon not started";
    case ErrorCode::AccessDenied:
      return "Access denied";
    case ErrorCode::DaemonGone:
      return "Daemon gone";
    case ErrorCode::NoAnswer:
      return "No answer";
    case ErrorCode::BadReply:
      return "Bad reply";
    case ErrorCode::UnknownOperation:
      return "Unknown operation";
    case ErrorCode::Unexpected:
      return "Unexpected error";
  }
  return "Unknown error";
}

}  // namespace

const ErrorCategory& ErrorCategory::get() noexcept {
  static const ErrorCategory instance;
  return instance;
}

const char* ErrorCategory::name() const noexcept { return "talowifi"; }

std::string ErrorCategory::message(int code) const { return TextOf(static_cast<ErrorCode>(code)); }

std::error_code make_error_code(ErrorCode code) noexcept {
  return {static_cast<int>(code), ErrorCategory::get()};
}

namespace Internal {

std::string FormatMessage(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list again;
  va_copy(again, arguments);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the analyzer loses va_start
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);

  std::string message = "Error but failed to format string";
  if (length >= 0) {
    message.resize(static_cast<std::size_t>(length));
    // The terminating zero goes where std::string keeps its own.
    std::vsnprintf(message.data(), message.size() + 1, format, again);
  }
  va_end(again);
  return message;
}

}  // namespace Internal

}  // namespace TALO::Wifi
