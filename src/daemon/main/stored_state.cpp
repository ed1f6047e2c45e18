#include "daemon/main/stored_state.h"

#include "daemon/model/country.h"
#include "daemon/model/first_state.h"
#include "daemon/model/mac_filter.h"
#include "daemon/model/text.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace TALO::Wifid {

State LoadState(StateStore& store, const Capabilities& capabilities, CountryCode country, const Log& log) {
  auto stored = store.Load();
  if (!stored.Succeeded()) {
    throw std::runtime_error(stored.Why().sentence);
  }
  StoredState& found = stored.Value();
  if (!found.trouble.empty()) {
    log.Write(Severity::Error, found.trouble);
  }
  const auto sayWhatIsOff = [&](CountryCode inForce) {
    for (const RadioCapability& radio : capabilities.radios) {
      if (const std::string why = WhyOff(inForce, radio); !why.empty()) {
        log.Write(Severity::Warning, why + ": it stays off");
      }
    }
  };
  if (!found.state) {
    sayWhatIsOff(country);
    return MakeFirstState(capabilities, country);
  }
  if (!CountryCapability(capabilities.model).codes.contains(found.state->country)) {
    throw std::runtime_error("the stored state is of a router in " + NameOrNumber(found.state->country) +
                             ", where the model " + NameOrNumber(capabilities.model) + " may not be used");
  }
  const auto limit = CheckRadiosLimitBroadcasts(capabilities, found.state->macFilterGlobal);
  if (!limit.Succeeded()) {
    log.Write(Severity::Warning, "the broadcast limit is switched off: " + limit.Why().sentence);
  }
  sayWhatIsOff(found.state->country);
  return AdaptToRadios(std::move(*found.state), capabilities);
}

}  // namespace TALO::Wifid
