#pragma once

#include "support/descriptors.h"
#include "support/temporary_directory.h"

#include <string>
#include <vector>

namespace TALO::Hwsim {

/// The control socket of a running hostapd or wpa_supplicant, with all that it tells.
class ControlSocket {
 public:
  /// Waits until the program listens at this path.
  explicit ControlSocket(const std::string& path);

  /// Throws std::runtime_error when no answer comes.
  std::string Ask(const std::string& request);
  /// Throws std::runtime_error with the answer when that is another than OK.
  void Do(const std::string& request);

  /// Waits for an event that begins with one of these texts, behind those that were waited for before, and
  /// returns it. Throws std::runtime_error with all events behind when none comes.
  std::string WaitFor(const std::vector<std::string>& beginnings);
  /// What came up to now is not waited for any more.
  void ForgetEvents();
  /// Whether an event that begins like this came, behind those that were waited for.
  bool Has(const std::string& beginning);

 private:
  /// Takes what comes next: an answer, or nothing where it was an event or time is up.
  std::string Receive(int milliseconds);

  TemporaryDirectory directory_;
  EndToEnd::Descriptor socket_;
  std::vector<std::string> events_;
};

}  // namespace TALO::Hwsim
