#pragma once

#include "daemon/model/result.h"
#include "daemon/radio/linux/wiphy.h"
#include "values/mac_address.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The door to the kernel: what it tells of radios, interfaces and bridges, and what it is asked to do with
/// them. It answers at once, as the kernel does. Only what is in this network namespace is seen. Failures are
/// RadioFailed with a sentence that names the object and the kernel's reason; a question that fails throws
/// std::system_error.
class Kernel {
 public:
  virtual ~Kernel() = default;

  /// In the order of their numbers. What a country allows changes with it, so it is asked anew after that.
  virtual std::vector<Wiphy> GetWiphys() const = 0;

  /// The wireless ones that have a name, in the order of their numbers.
  virtual std::vector<WirelessInterface> GetInterfaces() const = 0;

  /// Makes an interface, which is down. In 4-address mode it may join a bridge.
  struct NewInterface {
    int wiphy = 0;
    std::string name;
    InterfaceType type = InterfaceType::Station;
    Wifi::Util::MACAddress address;
    bool fourAddress = false;

    bool operator==(const NewInterface&) const = default;
  };
  virtual Result<void> AddInterface(const NewInterface& interface) = 0;
  virtual Result<void> DeleteInterface(const std::string& name) = 0;

  virtual Result<void> SetUp(const std::string& interface, bool up) = 0;

  /// How strongly all interfaces of a radio send at most, those to come included, in dBm.
  virtual Result<void> SetTransmitPower(int wiphy, int power) = 0;

  /// The stations of an access point, or the access point of a station. Empty for an interface that is gone.
  /// A station in 4-address mode is at the AccessPointVLAN interface that the access point makes for it.
  virtual std::vector<LinkedStation> GetStations(const std::string& interface) const = 0;

  /// Empty where the hardware does not count.
  virtual std::vector<ChannelSurvey> GetSurvey(const std::string& interface) const = 0;

  /// Two letters, "00" for the world; there is one for all radios of a machine.
  virtual std::string GetCountry() const = 0;

  /// Asks for a country. It comes into force later, or another does: see SetCountrySink().
  virtual Result<void> RequestCountry(const std::string& code) = 0;

  /// What is called, on the event loop, whenever another country came into force; nothing where it is empty.
  virtual void SetCountrySink(std::function<void()> sink) = 0;

  virtual std::set<std::string> GetBridges() const = 0;

  /// The bridge that an interface belongs to, empty for none.
  virtual std::string GetBridgeOf(const std::string& interface) const = 0;
  virtual Result<void> SetBridge(const std::string& interface, const std::string& bridge) = 0;

  /// The IP addresses that devices were last seen with on this machine's networks; IPv4 before IPv6.
  virtual std::map<Wifi::Util::MACAddress, std::string> GetNeighbours() const = 0;
};

}  // namespace TALO::Wifid
