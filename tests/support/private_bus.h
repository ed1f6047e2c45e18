#pragma once

#include "support/process.h"
#include "support/temporary_directory.h"

#include <memory>
#include <string>

namespace TALO::EndToEnd {

/// What a private bus is like.
struct BusSetup {
  /// Rules that go behind "everybody may do everything", and before which nobody comes.
  std::string policy = {};
  /// How long the bus waits for what it started to take the name; in milliseconds.
  int startTimeout = 25000;
  /// The command that starts the daemon when its name is called for; empty: nothing starts it.
  std::string activation = {};
  /// The text of a policy file that is in force in place of "everybody may do everything", beside the rules
  /// that every system bus has.
  std::string policyFile = {};
};

/// A bus of a test's own, ready once this is made.
class PrivateBus {
 public:
  explicit PrivateBus(const BusSetup& setup = {});

  const std::string& Address() const { return address_; }
  Process& GetProcess() { return *process_; }

 private:
  TemporaryDirectory directory_;
  std::unique_ptr<Process> process_;
  std::string address_;
};

}  // namespace TALO::EndToEnd
