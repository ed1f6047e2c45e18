#pragma once

#include "daemon/radio/simulated/devices.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The one WPS push button session that may run, and who presses a button meanwhile.
class WPSSession {
 public:
  using FindBSS = std::function<std::optional<OpenBSS>(const std::string& interface)>;

  WPSSession(const Surroundings& surroundings, Devices& devices, FindBSS findBSS);
  WPSSession(const WPSSession&) = delete;
  WPSSession& operator=(const WPSSession&) = delete;

  /// The interface whose session runs.
  const std::optional<std::string>& GetInterface() const { return interface_; }

  /// Only while none runs.
  void Open(const std::string& interface);

  /// Only while one runs.
  void End(WPSFinished::Outcome outcome);

 private:
  void Press(std::size_t device);
  void Admit();

  const Surroundings& surroundings_;
  Devices& devices_;
  FindBSS findBSS_;
  std::optional<std::string> interface_;
  std::optional<std::size_t> pressed_;  ///< the device that waits whether another presses, too
  std::vector<Timers::Id> pending_;
};

}  // namespace TALO::Wifid
