#pragma once

#include "daemon/radio/radio_driver.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace TALO::Wifid {

/// A driver with the world around it, for the tests that every driver passes. It has two radios or more, all
/// of them down, and the bridge "br0". One device is near: it knows the network "Network 4" with
/// "correct-horse" and joins it by itself, on any radio. So is an access point "Miller", on the lowest
/// channel of the first radio.
class DriverUnderTest {
 public:
  virtual ~DriverUnderTest() = default;

  virtual RadioDriver& Driver() = 0;

  /// Lets time pass until the condition holds. False when it cannot hold any more, or has not for long.
  virtual bool WaitUntil(const std::function<bool()>& condition) = 0;

  /// Lets so much time pass that everything that was to happen at once has happened.
  virtual void Settle() = 0;
};

/// How a test makes its driver. The name is part of the test's name.
struct DriverFactory {
  std::string name;
  std::function<std::unique_ptr<DriverUnderTest>()> make;

  friend void PrintTo(const DriverFactory& factory, std::ostream* out) { *out << factory.name; }
};

}  // namespace TALO::Wifid
