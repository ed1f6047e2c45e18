#include "daemon/main/setup_check.h"

#include "daemon/model/country.h"
#include "daemon/model/text.h"

#include <stdexcept>

namespace TALO::Wifid {

namespace {

std::string ListOf(const std::set<std::string>& bridges) {
  std::string list;
  for (const std::string& bridge : bridges) {
    list += (list.empty() ? "" : ", ") + Quoted(bridge);
  }
  return list;
}

}  // namespace

void CheckCountry(const Options& options) {
  if (!CountryCapability(options.model).codes.contains(options.country)) {
    throw std::invalid_argument("the option country cannot be " + Quoted(NameOrNumber(options.country)) +
                                ": the model " + NameOrNumber(options.model) +
                                " may not be used in that country");
  }
}

void CheckBridge(const Options& options, const std::set<std::string>& bridges) {
  if (!bridges.contains(options.bridge)) {
    throw std::invalid_argument("the option bridge cannot be " + Quoted(options.bridge) +
                                ": the router has " +
                                (bridges.empty() ? "no bridge" : "only these bridges: " + ListOf(bridges)));
  }
}

}  // namespace TALO::Wifid
