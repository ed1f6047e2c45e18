#include "daemon/service/event_log.h"

#include "daemon/service/message_ids.h"
#include "values/enum_names.h"

#include <variant>

namespace TALO::Wifid {

namespace {

struct Writer {
  const Log& log;

  void operator()(const StationConnected& connected) const {
    log.Write(Severity::Debug, connected.address.ToString() + " connected to " + connected.interface,
              {.values = Fields(connected)});
  }

  void operator()(const StationDisconnected& gone) const {
    LogFields fields{.values = Fields(gone)};
    fields.values.emplace_back("REASON", gone.reason);
    log.Write(Severity::Debug,
              gone.address.ToString() + " disconnected from " + gone.interface + ": " + gone.reason, fields);
  }

  void operator()(const RadioStateChanged& changed) const {
    const std::string radio(Wifi::Util::FindEnumName(changed.radio));
    const std::string state = changed.up ? "up" : "down";
    log.Write(Severity::Information, radio + " is " + state,
              {.messageId = MessageIds::kRadioState, .values = {{"RADIO", radio}, {"STATE", state}}});
  }

  void operator()(const WPSFinished& finished) const {
    const std::string outcome = WordOf(finished.outcome);
    log.Write(Severity::Information, "WPS on " + finished.interface + " ended: " + outcome,
              {.values = {{"INTERFACE", finished.interface}, {"OUTCOME", outcome}}});
  }

 private:
  template <typename StationEvent>
  static std::vector<std::pair<std::string, std::string>> Fields(const StationEvent& event) {
    return {{"STATION", event.address.ToString()},
            {"NETWORK", std::to_string(event.networkId)},
            {"INTERFACE", event.interface}};
  }
};

}  // namespace

std::string WordOf(WPSFinished::Outcome outcome) {
  switch (outcome) {
    case WPSFinished::Outcome::Enrolled:
      return "enrolled";
    case WPSFinished::Outcome::TimedOut:
      return "timed out";
    case WPSFinished::Outcome::Overlap:
      return "overlap";
    case WPSFinished::Outcome::Cancelled:
      return "cancelled";
  }
  return {};
}

void LogEvent(const Log& log, const RadioEvent& event) { std::visit(Writer{log}, event); }

}  // namespace TALO::Wifid
