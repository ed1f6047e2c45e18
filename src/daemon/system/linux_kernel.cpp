#include "daemon/system/linux_kernel.h"

#include "daemon/system/wiphy_reading.h"
#include "daemon/system/wireless_readings.h"
#include "daemon/system/wireless_requests.h"

#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

int FamilyOf(NetlinkSocket& socket) {
  const int family = genl_ctrl_resolve(socket.Get(), NL80211_GENL_NAME);
  if (family < 0) {
    throw std::system_error(ENODEV, std::generic_category(), "the kernel has no wifi (nl80211)");
  }
  return family;
}

/// Throws std::system_error where there is no interface of that name.
unsigned IndexOf(const std::string& interface) {
  const unsigned index = if_nametoindex(interface.c_str());
  if (index == 0) {
    throw std::system_error(errno, std::generic_category());
  }
  return index;
}

/// What a question answers; throws what failed with a sentence that says what was asked.
template <typename Question>
auto Ask(const std::string& what, Question question) {
  try {
    return question();
  } catch (const std::system_error& failure) {
    throw std::system_error(failure.code(), "the kernel does not tell " + what);
  }
}

/// Does what may fail, and says what could not be done.
template <typename Change>
Result<void> Try(const std::string& failed, Change change) {
  try {
    change();
    return {};
  } catch (const std::system_error& failure) {
    return Refusal{ErrorCode::RadioFailed, failed + ": " + failure.what()};
  }
}

/// As a question that is answered by nothing where the kernel has nothing to tell, for one of these reasons.
template <typename Question>
auto AskWhereThereIsAny(const std::vector<std::errc>& reasons, Question question) -> decltype(question()) {
  try {
    return question();
  } catch (const std::system_error& failure) {
    if (std::ranges::none_of(reasons, [&](std::errc reason) { return failure.code() == reason; })) {
      throw;
    }
    return {};
  }
}

}  // namespace

LinuxKernel::LinuxKernel(const Loop& loop)
    : generic_(NETLINK_GENERIC),
      route_(NETLINK_ROUTE),
      family_(FamilyOf(generic_)),
      countryEvents_(loop, [this] {
        // It may set another.
        if (const auto sink = countrySink_) {
          sink();
        }
      }) {}

std::vector<Wiphy> LinuxKernel::GetWiphys() const {
  return Ask("of its radios", [&] { return ReadWiphys(generic_.Ask(ListWiphys(family_))); });
}

std::vector<WirelessInterface> LinuxKernel::GetInterfaces() const {
  return Ask("of its wifi interfaces", [&] { return ReadInterfaces(generic_.Ask(ListInterfaces(family_))); });
}

Result<void> LinuxKernel::AddInterface(const NewInterface& interface) {
  return Try("the interface " + interface.name + " cannot be made",
             [&] { generic_.Ask(MakeInterface(family_, interface)); });
}

Result<void> LinuxKernel::DeleteInterface(const std::string& name) {
  return Try("the interface " + name + " cannot be deleted",
             [&] { generic_.Ask(EndInterface(family_, IndexOf(name))); });
}

Result<void> LinuxKernel::SetUp(const std::string& interface, bool up) {
  return Try("the interface " + interface + " cannot be brought " + (up ? "up" : "down"),
             [&] { route_.Ask(ChangeUp(IndexOf(interface), up)); });
}

Result<void> LinuxKernel::SetTransmitPower(int wiphy, int power) {
  return Try("the power of the phy number " + std::to_string(wiphy) + " cannot be set to " +
                 std::to_string(power) + " dBm",
             [&] { generic_.Ask(ChangeTransmitPower(family_, wiphy, power)); });
}

std::vector<LinkedStation> LinuxKernel::GetStations(const std::string& interface) const {
  return Ask("of the stations of " + interface, [&] {
    return AskWhereThereIsAny({std::errc::no_such_device}, [&] {
      return ReadStations(generic_.Ask(ListStations(family_, IndexOf(interface))));
    });
  });
}

std::vector<ChannelSurvey> LinuxKernel::GetSurvey(const std::string& interface) const {
  return Ask("of the channels of " + interface, [&] {
    return AskWhereThereIsAny({std::errc::no_such_device, std::errc::operation_not_supported}, [&] {
      return ReadSurvey(generic_.Ask(ListSurvey(family_, IndexOf(interface))));
    });
  });
}

std::string LinuxKernel::GetCountry() const {
  return Ask("the country", [&] { return ReadCountry(generic_.Ask(AskForCountry(family_))); });
}

Result<void> LinuxKernel::RequestCountry(const std::string& code) {
  return Try("the country " + code + " cannot be asked for",
             [&] { generic_.Ask(ChangeCountry(family_, code)); });
}

void LinuxKernel::SetCountrySink(std::function<void()> sink) { countrySink_ = std::move(sink); }

std::vector<Link> LinuxKernel::GetLinks() const {
  return Ask("of its network interfaces", [&] { return ReadLinks(route_.Ask(ListLinks())); });
}

std::set<std::string> LinuxKernel::GetBridges() const {
  std::set<std::string> bridges;
  for (const Link& link : GetLinks()) {
    if (link.isBridge) {
      bridges.insert(link.name);
    }
  }
  return bridges;
}

std::string LinuxKernel::GetBridgeOf(const std::string& interface) const {
  const std::vector<Link> links = GetLinks();
  const auto found = std::ranges::find(links, interface, &Link::name);
  if (found == links.end()) {
    return {};
  }
  const auto bridge = std::ranges::find_if(
      links, [&](const Link& link) { return link.isBridge && link.index == found->master; });
  return bridge == links.end() ? std::string() : bridge->name;
}

Result<void> LinuxKernel::SetBridge(const std::string& interface, const std::string& bridge) {
  const std::string failed = bridge.empty()
                                 ? "the interface " + interface + " cannot leave its bridge"
                                 : "the interface " + interface + " cannot join the bridge " + bridge;
  return Try(failed, [&] {
    const unsigned master = bridge.empty() ? 0 : IndexOf(bridge);
    route_.Ask(ChangeMaster(IndexOf(interface), master));
  });
}

std::map<Wifi::Util::MACAddress, std::string> LinuxKernel::GetNeighbours() const {
  return Ask("of the devices on its networks", [&] { return ReadNeighbours(route_.Ask(ListNeighbours())); });
}

}  // namespace TALO::Wifid
