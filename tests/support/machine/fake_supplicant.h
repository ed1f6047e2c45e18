#pragma once

#include "support/machine/fake_files.h"
#include "support/machine/fake_kernel.h"
#include "support/machine/fake_program.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Another access point in the air.
struct FakeAccessPoint {
  std::string ssid;
  Wifi::Util::MACAddress bssid;
  int frequency = 0;
  int signal = -60;
  std::string passphrase = {};  ///< of WPA2 personal; empty for an open one
  bool tellsTooMuch = false;    ///< no answer holds its information elements
};

/// wpa_supplicant as far as its global control socket goes: interfaces come and go, look for the network of
/// their file, join it or tell why not, and listen.
class FakeSupplicant final : public FakeProgram {
 public:
  static constexpr Timers::Duration kTimeToScan{2'000};

  FakeSupplicant(Timers& timers, FakeSockets& sockets, FakeKernel& kernel, const FakeFiles& files)
      : FakeProgram(timers, sockets), kernel_(kernel), files_(files) {}

  bool HasInterface(const std::string& interface) const { return interfaces_.contains(interface); }
  /// The access point goes off the air; who was connected finds out at once.
  void TakeOffTheAir(const Wifi::Util::MACAddress& bssid);
  void TellOf(const std::string& interface, const std::string& message);

  std::vector<FakeAccessPoint> air;
  /// A scan of the interface's own ends with the error -95.
  bool cannotScan = false;
  /// A scan ends before it is said to have begun.
  bool scansAtOnce = false;
  /// A scan never ends.
  bool scansForEver = false;
  /// So many entries does one answer hold.
  std::size_t longestList = 2;

 private:
  struct Interface {
    std::map<std::string, std::string> network;  ///< empty for one that only listens
    bool looks = false;
    bool scanning = false;
    std::string scanId;         ///< of one that was asked for, as in " id=1"
    Wifi::Util::MACAddress on;  ///< the access point that it is connected to
    int failures = 0;
    int attempt = 0;  ///< what waits for an earlier one is over
  };

  std::string Obey(const std::string& request) override;
  void Forget() override;
  std::string Add(const std::string& line);
  std::string ObeyOn(const std::string& name, Interface& interface, const std::string& command);
  std::string List(const std::string& asked) const;
  void Listen(const std::string& name);
  void EndListening(const std::string& name);
  void Look(const std::string& name);
  void Join(const std::string& name);
  void LookLater(const std::string& name);
  /// The hardware is on one channel alone, which access points beside this station have.
  bool IsInTheWay(const std::string& name, int frequency) const;
  void Leave(const std::string& name, Interface& interface);

  FakeKernel& kernel_;
  const FakeFiles& files_;
  std::map<std::string, Interface> interfaces_;
  int lastScan_ = 0;  ///< of those that were asked for
};

}  // namespace TALO::Wifid
