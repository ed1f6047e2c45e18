#include "daemon/service/access.h"

#include "bus/operations.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;

TEST(Access, IsForRootTheDaemonsOwnUserAndTheMembersOfTheGroup) {
  const Access access(200, 50);
  EXPECT_TRUE(access.IsAdministrator({0, {0}}));
  EXPECT_TRUE(access.IsAdministrator({200, {200}}));
  EXPECT_TRUE(access.IsAdministrator({1000, {50}}));
  EXPECT_TRUE(access.IsAdministrator({1000, {7, 50, 1000}}));
  EXPECT_FALSE(access.IsAdministrator({1000, {1000}}));
  EXPECT_FALSE(access.IsAdministrator({1000, {}}));
  EXPECT_FALSE(access.IsAdministrator({50, {1000}}));
  EXPECT_FALSE(access.IsAdministrator({1000, {0, 200}}));
}

TEST(Access, IsForRootAndTheDaemonsOwnUserWhereThereIsNoGroup) {
  const Access access(200, std::nullopt);
  EXPECT_TRUE(access.IsAdministrator({0, {0}}));
  EXPECT_TRUE(access.IsAdministrator({200, {200}}));
  EXPECT_FALSE(access.IsAdministrator({1000, {0, 50, 200}}));
}

template <typename Rows>
void ExpectOpen(std::set<OpenMethod>& rows) {
  Rows::ForEach([&rows](auto row) {
    const OpenMethod method{Rows::name.View(), row.name.View()};
    EXPECT_TRUE(IsOpen(method)) << method.interface << "." << method.member << " has no row";
    rows.insert(method);
  });
}

// The live daemon's methods are held against the table end to end, those of sd-bus included.
TEST(OpenMethods, AreTheOperationsAndWhatEveryObjectHas) {
  std::set<OpenMethod> wanted = {
      {"org.freedesktop.DBus.Properties", "Get"},    {"org.freedesktop.DBus.Properties", "GetAll"},
      {"org.freedesktop.DBus.Properties", "Set"},    {"org.freedesktop.DBus.Introspectable", "Introspect"},
      {"org.freedesktop.DBus.Peer", "GetMachineId"}, {"org.freedesktop.DBus.Peer", "Ping"},
  };
  ExpectOpen<Bus::General>(wanted);
  ExpectOpen<Bus::Mesh>(wanted);
  ExpectOpen<Bus::Topology>(wanted);
  ExpectOpen<Bus::Tool>(wanted);
  EXPECT_EQ(std::set<OpenMethod>(OpenMethods().begin(), OpenMethods().end()), wanted);
  EXPECT_EQ(OpenMethods().size(), wanted.size());
}

TEST(OpenMethods, AreNoOthers) {
  EXPECT_FALSE(IsOpen({"com.talo.Wifi1.General", "GetContext"}));
  EXPECT_FALSE(IsOpen({"com.talo.Wifi1.General", "getNetworkSettings"}));
  EXPECT_FALSE(IsOpen({"com.talo.Wifi1", "GetNetworkSettings"}));
  EXPECT_FALSE(IsOpen({"", "GetNetworkSettings"}));
  EXPECT_FALSE(IsOpen({"", ""}));
}

}  // namespace

}  // namespace TALO::Wifid
