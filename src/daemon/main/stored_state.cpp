#include "daemon/main/stored_state.h"

#include "daemon/model/first_state.h"

#include <stdexcept>
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
  return found.state ? AdaptToRadios(std::move(*found.state), capabilities)
                     : MakeFirstState(capabilities, country);
}

}  // namespace TALO::Wifid
