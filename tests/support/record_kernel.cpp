#include "daemon/system/link_messages.h"
#include "daemon/system/netlink_socket.h"
#include "daemon/system/wireless_requests.h"
#include "support/files.h"

#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace TALO::Wifid {

namespace {

std::string Joined(const Messages& messages) {
  std::string all;
  for (const std::string& message : messages) {
    all += message;
  }
  return all;
}

/// Writes what the kernel answers to each question into a file of its own.
void Record(const std::string& directory, const std::string& interface) {
  NetlinkSocket generic(NETLINK_GENERIC);
  NetlinkSocket route(NETLINK_ROUTE);
  const int family = genl_ctrl_resolve(generic.Get(), NL80211_GENL_NAME);
  const unsigned index = if_nametoindex(interface.c_str());
  const auto write = [&](const char* name, NetlinkSocket& socket, const NetlinkRequest& request) {
    WriteFile(directory + "/" + name, Joined(socket.Ask(request)));
  };
  write("wiphys", generic, ListWiphys(family));
  write("interfaces", generic, ListInterfaces(family));
  write("stations", generic, ListStations(family, index));
  write("survey", generic, ListSurvey(family, index));
  write("country", generic, AskForCountry(family));
  write("links", route, ListLinks());
  write("neighbours", route, ListNeighbours());
}

}  // namespace

}  // namespace TALO::Wifid

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: record_kernel DIRECTORY INTERFACE\n";
    return EXIT_FAILURE;
  }
  try {
    TALO::Wifid::Record(argv[1], argv[2]);
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
