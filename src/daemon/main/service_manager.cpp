#include "daemon/main/service_manager.h"

#include <systemd/sd-daemon.h>

namespace TALO::Wifid {

namespace {

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string StatusOf(const Engine& engine) {
  return "STATUS=" + StatusText(engine.GetState().networks.size(), engine.GetCapabilities().radios.size());
}

}  // namespace

std::string StatusText(std::size_t networks, std::size_t radios) {
  return Counted(networks, "network") + " on " + Counted(radios, "radio");
}

void ServiceManager::Ready(const Engine& engine) {
  engine_ = &engine;
  sd_notify(0, ("READY=1\n" + StatusOf(engine)).c_str());
}

void ServiceManager::NetworksChanged() {
  next_.NetworksChanged();
  if (engine_ != nullptr) {
    sd_notify(0, StatusOf(*engine_).c_str());
  }
}

}  // namespace TALO::Wifid
