#include "hwsim/support/network_namespace.h"

#include "hwsim/support/waiting.h"

namespace TALO::Hwsim {

NetworkNamespace::NetworkNamespace(const std::string& name) : name_(name) {
  OutputOf({"ip", "netns", "add", name});
  OutputOf(Inside({"ip", "link", "set", "lo", "up"}));
}

Words NetworkNamespace::Inside(const Words& words) const {
  return name_.empty() ? words : Words{"ip", "netns", "exec", name_} + words;
}

std::string NetworkNamespace::TakeRadio(int number) const {
  const std::string text = std::to_string(number);
  OutputOf({"iw", "phy", "phy" + text, "set", "netns", "name", name_});
  return "wlan" + text;
}

void NetworkNamespace::MakeBridge(const std::string& bridge) const {
  OutputOf(Inside({"ip", "link", "add", bridge, "up", "type", "bridge", "forward_delay", "0"}));
}

void NetworkNamespace::Join(const std::string& bridge, const std::string& interface) const {
  OutputOf(Inside({"ip", "link", "set", interface, "master", bridge}));
}

void NetworkNamespace::SetAddress(const std::string& interface, const std::string& address) const {
  OutputOf(Inside({"ip", "address", "replace", address + "/24", "dev", interface}));
  OutputOf(Inside({"ip", "link", "set", interface, "up"}));
}

void NetworkNamespace::ExpectPing(const std::string& address) const {
  WaitUntil(name_ + " reaches " + address, [&] {
    return Succeeds(Inside({"busybox", "ping", "-c", "1", "-W", "1", address}));
  });
}

bool NetworkNamespace::Pings(const std::string& address) const {
  return Succeeds(Inside({"busybox", "ping", "-c", "3", "-W", "1", address}));
}

void Connect(const NetworkNamespace& one, const std::string& interface, const NetworkNamespace& other,
             const std::string& otherInterface) {
  OutputOf(one.Inside({"ip", "link", "add", interface, "type", "veth", "peer", "name", otherInterface}));
  OutputOf(one.Inside({"ip", "link", "set", otherInterface, "netns", other.Name()}));
  OutputOf(one.Inside({"ip", "link", "set", interface, "up"}));
  OutputOf(other.Inside({"ip", "link", "set", otherInterface, "up"}));
}

}  // namespace TALO::Hwsim
