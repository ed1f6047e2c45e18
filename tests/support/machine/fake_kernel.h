#pragma once

#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/timers.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A kernel with the phys it was given, each of which has an interface "wlanN" at first, the bridges "br0"
/// and "br1", and the rules of the world, of DE, FR and US. A country comes into force after a moment; one
/// that it does not know ends after three seconds in the rules of the world.
class FakeKernel final : public Kernel {
 public:
  FakeKernel(Timers& timers, const std::vector<Wiphy>& wiphys);

  std::vector<Wiphy> GetWiphys() const override;
  std::vector<WirelessInterface> GetInterfaces() const override;
  Result<void> AddInterface(const NewInterface& interface) override;
  Result<void> DeleteInterface(const std::string& name) override;
  Result<void> SetUp(const std::string& interface, bool up) override;
  Result<void> SetTransmitPower(int wiphy, int power) override;
  std::vector<LinkedStation> GetStations(const std::string& interface) const override;
  std::vector<ChannelSurvey> GetSurvey(const std::string& interface) const override;
  std::string GetCountry() const override;
  Result<void> RequestCountry(const std::string& code) override;
  void SetCountrySink(std::function<void()> sink) override { countrySink_ = std::move(sink); }
  std::set<std::string> GetBridges() const override;
  std::string GetBridgeOf(const std::string& interface) const override;
  Result<void> SetBridge(const std::string& interface, const std::string& bridge) override;
  std::map<Wifi::Util::MACAddress, std::string> GetNeighbours() const override;

  // What its other users and the air do.
  bool HasInterface(const std::string& name) const { return interfaces_.contains(name); }
  const WirelessInterface& InterfaceOf(const std::string& name) const { return interfaces_.at(name).about; }
  void SetType(const std::string& name, InterfaceType type);
  /// Zeros where it has none.
  void SetChannel(const std::string& name, int frequency, int width);
  void Link(const std::string& interface, const Wifi::Util::MACAddress& station, bool authorized = true);
  void Unlink(const std::string& interface, const Wifi::Util::MACAddress& station);
  /// Another country, by whoever.
  void EnforceCountry(const std::string& code);
  /// As the country in force has it.
  std::optional<WiphyChannel> FindChannel(int wiphy, int frequency) const;

  std::set<std::string> bridges = {"br0", "br1"};
  std::map<Wifi::Util::MACAddress, std::string> neighbours;
  std::map<int, int> powers;  ///< by phy, as they were set
  bool hasRadars = true;      ///< some channels of 5 GHz take looking out for them
  bool takesCountries = true;
  std::map<std::string, std::string> refusals;  ///< why a call is refused, by its name as in "AddInterface"
  std::set<std::string> broken;                 ///< questions that throw, as in "GetWiphys"
  std::vector<std::string> countryRequests;

 private:
  struct FakeLink {
    Timers::Duration since{};
    bool authorized = true;
  };
  struct Interface {
    WirelessInterface about;
    bool fourAddress = false;
    std::string bridge;
    std::map<Wifi::Util::MACAddress, FakeLink> links;
  };

  void Question(const std::string& name) const;
  Result<void> CheckCall(const std::string& name, const std::string& object) const;
  void ApplyRules(WiphyBand& band) const;
  std::vector<Wiphy> Rule() const;

  Timers& timers_;
  std::vector<Wiphy> wiphys_;
  std::map<std::string, Interface> interfaces_;
  std::string country_ = "00";
  std::function<void()> countrySink_;
  int lastIndex_ = 0;
};

/// Hardware as it is common: both bands with 802.11n, ac and ax, eight access points and two stations at
/// once, on two channels, with 4-address mode.
Wiphy MakeWiphy(int index);

}  // namespace TALO::Wifid
