#pragma once

#include <sys/types.h>

#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <tuple>

/// Who may call the daemon, and what can be called at all.
namespace TALO::Wifid {

/// Whom a caller acts for, as the bus vouches for it.
struct Identity {
  uid_t user = 0;
  std::set<gid_t> groups = {};
};

/// Root, the daemon's own user and the members of one group administer the router's wifi; nobody else has a
/// say in it.
class Access {
 public:
  Access(uid_t ownUser, std::optional<gid_t> group) : ownUser_(ownUser), group_(group) {}

  bool IsAdministrator(const Identity& caller) const;

 private:
  uid_t ownUser_;
  std::optional<gid_t> group_;
};

/// A method that administrators may call.
struct OpenMethod {
  std::string_view interface;
  std::string_view member;

  bool operator==(const OpenMethod&) const = default;
  bool operator<(const OpenMethod& other) const {
    return std::tie(interface, member) < std::tie(other.interface, other.member);
  }
};

/// All of them. A method without a row is open to nobody.
std::span<const OpenMethod> OpenMethods();

bool IsOpen(const OpenMethod& method);

}  // namespace TALO::Wifid
