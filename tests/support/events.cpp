#include "support/events.h"

#include "daemon/model/text.h"

#include <variant>

namespace TALO::Wifid {

namespace {

std::string OnBSS(const std::string& interface, int networkId) {
  return interface + " (" + std::to_string(networkId) + ")";
}

struct Describer {
  std::string operator()(const StationConnected& event) const {
    return event.address.ToString() + " connected to " + OnBSS(event.interface, event.networkId);
  }
  std::string operator()(const StationDisconnected& event) const {
    return event.address.ToString() + " left " + OnBSS(event.interface, event.networkId) + ": " +
           event.reason;
  }
  std::string operator()(const RadioStateChanged& event) const {
    return NameOrNumber(event.radio) + (event.up ? " up" : " down");
  }
  std::string operator()(const WPSFinished& event) const {
    const std::string start = "WPS on " + event.interface + ": ";
    switch (event.outcome) {
      case WPSFinished::Outcome::Enrolled:
        return start + "enrolled";
      case WPSFinished::Outcome::TimedOut:
        return start + "timed out";
      case WPSFinished::Outcome::Overlap:
        return start + "overlap";
      case WPSFinished::Outcome::Cancelled:
        return start + "cancelled";
    }
    return start;
  }
};

}  // namespace

std::string Describe(const RadioEvent& event) { return std::visit(Describer(), event); }

std::string Describe(const Refusal& refusal) {
  switch (refusal.code) {
    case ErrorCode::RadioFailed:
      return "RadioFailed " + refusal.sentence;
    case ErrorCode::NotSupported:
      return "NotSupported " + refusal.sentence;
    case ErrorCode::NotAllowed:
      return "NotAllowed " + refusal.sentence;
    case ErrorCode::Busy:
      return "Busy " + refusal.sentence;
    default:
      return std::to_string(static_cast<int>(refusal.code)) + " " + refusal.sentence;
  }
}

std::string Describe(const LiveUpstream& upstream) {
  const std::string target =
      upstream.ssid + " " + upstream.bssid.ToString() + " on channel " + std::to_string(upstream.channel);
  const std::string measured = ", " + std::to_string(upstream.signal) + " dBm, " +
                               std::to_string(upstream.transmitRate) + " Mbit/s for " +
                               std::to_string(upstream.connectedTime) + " s";
  switch (upstream.phase) {
    case LiveUpstream::Phase::Disabled:
      return "disabled " + upstream.ssid;
    case LiveUpstream::Phase::Scanning:
      return "scanning for " + upstream.ssid;
    case LiveUpstream::Phase::Connecting:
      return "connecting to " + target;
    case LiveUpstream::Phase::Connected:
      return "connected to " + target + measured;
    case LiveUpstream::Phase::Failed:
      return "failed to join " + upstream.ssid + ": " + upstream.reason;
  }
  return {};
}

}  // namespace TALO::Wifid
