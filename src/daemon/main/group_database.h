#pragma once

#include <sys/types.h>

#include <optional>
#include <set>
#include <string>

/// What the machine knows of users and groups. Throws std::system_error when it cannot be read.
namespace TALO::Wifid {

/// Nothing for a group that does not exist.
std::optional<gid_t> FindGroup(const std::string& name);

/// The groups of a user, none for one that does not exist.
std::set<gid_t> GroupsOf(uid_t user);

}  // namespace TALO::Wifid
