#pragma once

#include "daemon/radio/linux/linux_driver.h"
#include "support/machine/fake_files.h"
#include "support/machine/fake_hostapd.h"
#include "support/machine/fake_kernel.h"
#include "support/machine/fake_program.h"
#include "support/machine/fake_supplicant.h"
#include "support/manual_timers.h"

#include <functional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A machine with wifi hardware on which hostapd and wpa_supplicant are installed, at a time that the test
/// owns. It lives longer than the driver.
class FakeMachine {
 public:
  explicit FakeMachine(const std::vector<Wiphy>& wiphys = {MakeWiphy(0), MakeWiphy(1)});

  LinuxDoors Doors();

  /// Lets time pass until the condition holds, five minutes at most.
  bool WaitUntil(const std::function<bool()>& condition);
  void Advance(int milliseconds) { timers.Advance(Timers::Duration(milliseconds)); }

  /// Whether a note of this weight says so.
  bool HasNote(DriverNote::Weight weight, const std::string& sentence) const;

  ManualTimers timers;
  FakeKernel kernel;
  FakeFiles files;
  FakeSockets sockets;
  FakeHostapd hostapd;
  FakeSupplicant supplicant;
  FakeChildren children;
  std::vector<DriverNote> notes;
};

}  // namespace TALO::Wifid
