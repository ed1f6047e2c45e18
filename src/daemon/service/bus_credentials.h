#pragma once

#include "daemon/service/callers.h"

#include <functional>
#include <set>
#include <string>

namespace TALO::Wifid {

/// Asks the bus whom a caller acts for, and goes on while it answers.
class BusCredentials {
 public:
  /// The groups of a user by the machine's database, for a bus that does not tell them.
  using GroupsOf = std::function<std::set<gid_t>(uid_t user)>;

  BusCredentials(sd_bus* bus, GroupsOf groupsOf) : bus_(bus), groupsOf_(std::move(groupsOf)) {}

  void operator()(const std::string& caller, Callers::Identified identified) const;

 private:
  struct Question;
  static int OnAnswer(sd_bus_message* answer, void* question, sd_bus_error* error);

  sd_bus* bus_;
  GroupsOf groupsOf_;
};

}  // namespace TALO::Wifid
