#include "daemon/radio/simulated/scanner.h"

#include "daemon/model/text.h"

#include <utility>

namespace TALO::Wifid {

namespace {

constexpr Timers::Duration kRemembered = std::chrono::seconds(10);

}  // namespace

Scanner::Scanner(const RadioCapability& radio, const Surroundings& surroundings, const Air& air)
    : radio_(radio), surroundings_(surroundings), air_(air) {}

bool Scanner::Remembers() const { return heardAt_ && surroundings_.timers.Now() - *heardAt_ <= kRemembered; }

void Scanner::Scan(const std::optional<ScanFault>& fault, RadioDriver::ScanDone done) {
  if (!fault && Remembers()) {
    done(GetResults());
    return;
  }
  const std::string reason = fault ? fault->reason : std::string();
  surroundings_.timers.After(
      Milliseconds(surroundings_.scenario.timings.scanMilliseconds), [this, reason, done = std::move(done)] {
        if (!reason.empty()) {
          done(Refusal{ErrorCode::RadioFailed,
                       "the radio " + NameOrNumber(radio_.radio) + " cannot listen: " + reason});
          return;
        }
        heard_ = air_.HeardOn(radio_.channels);
        heardAt_ = surroundings_.timers.Now();
        done(GetResults());
      });
}

std::vector<Wifi::ScanResult> Scanner::GetResults() const {
  const int age = SecondsSince(surroundings_.timers, *heardAt_);
  std::vector<Wifi::ScanResult> results;
  for (const AccessPoint* each : heard_) {
    results.push_back({radio_.radio, each->hidden ? std::string() : each->ssid, each->bssid, each->channel,
                       each->channelWidth, each->signal, each->securityMode, each->wps, age});
  }
  return results;
}

}  // namespace TALO::Wifid
