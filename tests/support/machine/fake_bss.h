#pragma once

#include "values/mac_address.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace TALO::Wifid {

/// A device near the fake machine. It joins what it knows by itself.
struct FakeDevice {
  Wifi::Util::MACAddress address;
  std::map<std::string, std::string> knows;  ///< passphrases by SSID, empty for an open one
  bool speaksWPA3 = false;                   ///< and remembers keys
  std::string on = {};                       ///< the interface of the BSS that it is connected to
};

/// What a configuration file says, and the first thing in it that hostapd would not take.
struct FakeBSSFile {
  std::map<std::string, std::string> values;
  std::string complaint;  ///< as hostapd prints it; empty where there is none

  /// Empty where the file does not say.
  std::string Get(const std::string& key) const;
};
FakeBSSFile ReadBSSFile(const std::string& text);

/// A BSS of the fake hostapd, and what the commands to it do.
class FakeBSS {
 public:
  using MACAddress = Wifi::Util::MACAddress;
  struct Sinks {
    std::function<void(const std::string&)> tell;  ///< a message about this BSS
    std::function<void(const MACAddress&)> drop;   ///< one of its stations
  };

  FakeBSS(const FakeBSSFile& file, std::set<MACAddress> accepted, std::set<MACAddress> denied, Sinks sinks);

  std::string Obey(const std::string& command);

  bool Admits(const MACAddress& device) const;
  /// Whether a device gets in by what it knows or by a key that is still cached, and as what.
  bool LetsIn(const FakeDevice& device);

  const std::string& GetSSID() const { return ssid_; }
  /// Not one that only holds its radio.
  bool Sends() const { return sends_; }
  bool IsHidden() const { return beaconHides_; }
  bool HasPushButton() const { return wps_; }
  bool IsOpenForPushButton() const { return pushButton_; }
  void ClosePushButton() { pushButton_ = false; }
  const std::set<MACAddress>& GetAccepted() const { return accepted_; }
  const std::set<MACAddress>& GetDenied() const { return denied_; }

  std::map<MACAddress, bool> stations;  ///< those connected, and whether by WPA3

 private:
  std::string Set(const std::string& key, const std::string& value);
  std::string ChangeList(std::set<MACAddress>& list, const std::string& change);
  void DropNotAdmitted();
  void DropBy(const std::function<bool(const MACAddress&, bool)>& concerns);

  std::string ssid_;
  bool open_;
  bool psk_;
  bool sae_;
  std::string passphrase_;  ///< as it was set
  std::string key_;         ///< that WPA2 goes by: of the passphrase when it was loaded
  std::string saePassword_;
  bool sends_;
  bool hides_;
  bool beaconHides_;
  bool wps_;
  bool pushButton_ = false;
  bool onlyAccepted_;
  std::set<MACAddress> accepted_;
  std::set<MACAddress> denied_;
  std::set<MACAddress> cached_;
  Sinks sinks_;
};

}  // namespace TALO::Wifid
