#pragma once

#include "values/errors.h"

#include <ostream>
#include <string>
#include <system_error>

namespace TALO::Wifi {

/// What a call threw, if anything.
struct Thrown {
  enum Kind { Nothing, Refusal, Failure } kind = Nothing;
  std::error_code code;
  std::string what;

  bool operator==(const Thrown&) const = default;
};

inline void PrintTo(const Thrown& thrown, std::ostream* out) {
  *out << (thrown.kind == Thrown::Refusal   ? "WifiException"
           : thrown.kind == Thrown::Failure ? "DbusError"
                                            : "nothing")
       << " " << thrown.code << " " << thrown.what;
}

/// Runs `call`. What it throws besides the library's exceptions passes through.
template <typename Call>
Thrown Catch(Call call) {
  try {
    call();
  } catch (const WifiException& refusal) {
    return {Thrown::Refusal, refusal.code(), refusal.what()};
  } catch (const talo::dbus::DbusError& failure) {
    return {Thrown::Failure, failure.code(), failure.what()};
  }
  return {};
}

}  // namespace TALO::Wifi
