#pragma once

#include "daemon/radio/radio_driver.h"
#include "daemon/radio/simulated/air.h"

#include <optional>
#include <vector>

namespace TALO::Wifid {

/// Listens with one radio, and remembers for a while what it heard.
class Scanner {
 public:
  Scanner(const RadioCapability& radio, const Surroundings& surroundings, const Air& air);
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;

  /// What a driver's Scan does, for a radio that is up.
  void Scan(const std::optional<ScanFault>& fault, RadioDriver::ScanDone done);

  /// Whether Scan would give what was heard before.
  bool Remembers() const;

 private:
  std::vector<Wifi::ScanResult> GetResults() const;

  const RadioCapability& radio_;
  const Surroundings& surroundings_;
  const Air& air_;
  std::vector<const AccessPoint*> heard_;
  std::optional<Timers::Duration> heardAt_;
};

}  // namespace TALO::Wifid
