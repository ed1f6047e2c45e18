#include "daemon/main/group_database.h"

#include <grp.h>
#include <pwd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <vector>

namespace TALO::Wifid {

namespace {

/// Calls one of the database's functions with as much room as it needs; null for what is not there.
template <typename Entry, typename Lookup>
Entry* Find(Entry& entry, std::vector<char>& room, Lookup lookup) {
  constexpr std::size_t kFirstRoom = 4096;
  room.resize(kFirstRoom);
  for (;;) {
    Entry* found = nullptr;
    const int error = lookup(&entry, room.data(), room.size(), &found);
    if (error == ERANGE) {
      room.resize(room.size() * 2);
    } else if (found == nullptr && error != 0 && error != ENOENT && error != ESRCH) {
      throw std::system_error(error, std::generic_category(), "the users and groups cannot be read");
    } else {
      return found;
    }
  }
}

}  // namespace

std::optional<gid_t> FindGroup(const std::string& name) {
  group entry{};
  std::vector<char> room;
  const group* found = Find(entry, room, [&name](group* into, char* data, std::size_t size, group** result) {
    return getgrnam_r(name.c_str(), into, data, size, result);
  });
  return found != nullptr ? std::optional<gid_t>(found->gr_gid) : std::nullopt;
}

std::set<gid_t> GroupsOf(uid_t user) {
  passwd entry{};
  std::vector<char> room;
  const passwd* found =
      Find(entry, room, [user](passwd* into, char* data, std::size_t size, passwd** result) {
        return getpwuid_r(user, into, data, size, result);
      });
  if (found == nullptr) {
    return {};
  }
  // Says how many there are when they are more.
  int count = 32;
  std::vector<gid_t> groups(static_cast<std::size_t>(count));
  while (getgrouplist(found->pw_name, found->pw_gid, groups.data(), &count) < 0) {
    groups.resize(static_cast<std::size_t>(count));
  }
  return {groups.begin(), groups.begin() + count};
}

}  // namespace TALO::Wifid
