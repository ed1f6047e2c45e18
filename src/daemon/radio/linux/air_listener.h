#pragma once

#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/control/replies.h"
#include "daemon/radio/linux/program.h"
#include "daemon/radio/own_timers.h"
#include "daemon/radio/radio_driver.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Listens to what is in the air around one radio, by an interface that wpa_supplicant has.
class AirListener {
 public:
  AirListener(RadioFrequency radio, Program& supplicant, Timers& timers);
  AirListener(const AirListener&) = delete;
  AirListener& operator=(const AirListener&) = delete;

  /// What was heard not more than ten seconds ago, its age up to date; nothing where that is longer ago.
  std::optional<std::vector<Wifi::ScanResult>> Remember() const;
  void Forget() { heardAt_.reset(); }

  /// Listens on the frequencies. The BSSs of `own` are left out. One call at a time.
  void Listen(const std::string& interface, const std::vector<int>& frequencies,
              std::set<Wifi::Util::MACAddress> own, RadioDriver::ScanDone done);

  void Take(const ControlMessage& message);
  /// wpa_supplicant is gone.
  void LoseSupplicant();

 private:
  void Ask();
  void Begin(const std::string& number);
  void Collect(int after, Elements elements);
  void Keep(std::vector<Wifi::ScanResult> results);
  void End(Result<std::vector<Wifi::ScanResult>> result);

  /// What it waits for: wpa_supplicant to begin, the end of listening, the list of what was heard.
  enum class Phase { Asking, Listening, Collecting };

  RadioFrequency radio_;
  Program& supplicant_;
  OwnTimers timers_;
  std::string interface_;
  std::string command_;
  std::set<int> channels_;
  std::set<Wifi::Util::MACAddress> own_;
  RadioDriver::ScanDone done_;  ///< while it is asked to listen
  Phase phase_ = Phase::Asking;
  std::string number_;                 ///< by which wpa_supplicant tells of this time of listening
  std::vector<ControlMessage> early_;  ///< that came before the number of which they may tell
  Timers::Id deadline_ = 0;
  Timers::Id again_ = 0;
  Timers::Duration startedAt_{};
  std::optional<Timers::Duration> heardAt_;
  std::vector<Wifi::ScanResult> heard_;
};

}  // namespace TALO::Wifid
