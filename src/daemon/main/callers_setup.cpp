#include "daemon/main/callers_setup.h"

#include "daemon/main/group_database.h"
#include "daemon/model/text.h"
#include "daemon/service/bus_credentials.h"

#include <unistd.h>

namespace TALO::Wifid {

Callers MakeCallers(sd_bus* bus, const std::string& group, const Log& log) {
  const auto id = FindGroup(group);
  if (!id) {
    log.Write(Severity::Warning, "the group " + Quoted(group) +
                                     " of the option access-group does not exist: nobody but root and user " +
                                     std::to_string(geteuid()) + " may use the daemon");
  }
  return {{geteuid(), id}, BusCredentials(bus, GroupsOf), log};
}

}  // namespace TALO::Wifid
