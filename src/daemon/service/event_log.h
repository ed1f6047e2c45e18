#pragma once

#include "daemon/radio/radio_events.h"
#include "daemon/service/log.h"

#include <string>

namespace TALO::Wifid {

/// "enrolled", "timed out", "overlap" or "cancelled".
std::string WordOf(WPSFinished::Outcome outcome);

/// Logs what happened on the radios. Stations come and go at debug level only: anybody near the router could
/// fill the log otherwise.
void LogEvent(const Log& log, const RadioEvent& event);

}  // namespace TALO::Wifid
