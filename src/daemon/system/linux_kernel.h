#pragma once

#include "daemon/radio/linux/kernel.h"
#include "daemon/system/country_events.h"
#include "daemon/system/event_watch.h"
#include "daemon/system/link_messages.h"
#include "daemon/system/netlink_socket.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The kernel of this machine, by nl80211 and rtnetlink.
class LinuxKernel final : public Kernel {
 public:
  /// The loop must outlive this. Throws std::system_error where the kernel has no wifi.
  explicit LinuxKernel(const Loop& loop);
  LinuxKernel(const LinuxKernel&) = delete;
  LinuxKernel& operator=(const LinuxKernel&) = delete;

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
  void SetCountrySink(std::function<void()> sink) override;
  std::set<std::string> GetBridges() const override;
  std::string GetBridgeOf(const std::string& interface) const override;
  Result<void> SetBridge(const std::string& interface, const std::string& bridge) override;
  std::map<Wifi::Util::MACAddress, std::string> GetNeighbours() const override;

 private:
  std::vector<Link> GetLinks() const;

  mutable NetlinkSocket generic_;
  mutable NetlinkSocket route_;
  int family_;
  std::function<void()> countrySink_;
  CountryEvents countryEvents_;
};

}  // namespace TALO::Wifid
