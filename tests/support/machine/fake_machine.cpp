#include "support/machine/fake_machine.h"

#include <algorithm>

namespace TALO::Wifid {

FakeMachine::FakeMachine(const std::vector<Wiphy>& wiphys)
    : kernel(timers, wiphys),
      sockets(timers),
      hostapd(timers, sockets, kernel, files),
      supplicant(timers, sockets, kernel, files) {
  children.installed = {{"/usr/sbin/hostapd", &hostapd}, {"/usr/sbin/wpa_supplicant", &supplicant}};
}

LinuxDoors FakeMachine::Doors() {
  return {kernel, children, sockets,
          files,  timers,   [this](const DriverNote& note) { notes.push_back(note); }};
}

bool FakeMachine::WaitUntil(const std::function<bool()>& condition) {
  const Timers::Duration end = timers.Now() + std::chrono::minutes(5);
  while (!condition()) {
    if (timers.Now() > end || !timers.RunNext()) {
      return false;
    }
  }
  return true;
}

bool FakeMachine::HasNote(DriverNote::Weight weight, const std::string& sentence) const {
  return std::ranges::find(notes, DriverNote{weight, sentence}) != notes.end();
}

}  // namespace TALO::Wifid
