// Who may use the daemon: by the policy that is shipped, and by the daemon itself where that is loose.

#include "bus/operations.h"
#include "support/bus_monitor.h"
#include "support/end_to_end_test.h"
#include "support/files.h"
#include "support/test_connection.h"

#include <unistd.h>

#include <grp.h>

#include <csignal>
#include <cstring>
#include <regex>
#include <tuple>

namespace TALO::EndToEnd {

namespace {

namespace Bus = Wifi::Bus;

/// A group of every Debian machine stands for netdev, which some lack.
constexpr const char* kGroup = "users";

const User kNobody{65534, 65534};

User MemberOfGroup() { return {65534, 65534, {getgrnam(kGroup)->gr_gid}}; }

std::string ShippedPolicy() { return ReadFile(TALOWIFI_POLICY_FILE); }

/// The shipped policy but for the name of the group.
std::string PolicyOfGroup() {
  return std::regex_replace(ShippedPolicy(), std::regex("group=\"netdev\""),
                            std::string("group=\"") + kGroup + "\"");
}

class Access : public EndToEndTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) {
      GTEST_SKIP() << "only root can act as other users: NOTHING of who may use the daemon is tested";
    }
  }

  void StartOnBus(const BusSetup& bus, const std::string& group = kGroup) {
    StartBus(bus);
    StartDaemon({.options = {"--log-level", "Debug", "--access-group", group}});
  }
  void StartOnShippedPolicy() { StartOnBus({.policyFile = PolicyOfGroup()}); }

  /// The error of a call without arguments, "none" for an answer.
  static std::string ErrorOf(sd_bus* bus, const char* destination, const char* path, const char* interface,
                             const char* member) {
    Bus::BusError error;
    if (sd_bus_call_method(bus, destination, path, interface, member, error.Get(), nullptr, "") >= 0) {
      return "none";
    }
    return std::string((*error).name) + ": " + (*error).message;
  }
  static std::string ErrorOf(const Bus::BusHandle& bus, const char* interface, const char* member) {
    return ErrorOf(bus.get(), "com.talo.Wifi1", "/com/talo/Wifi1", interface, member);
  }

  /// The errors of one call of each interface, but for the bus's own words.
  std::vector<std::string> ErrorsAs(const User& user) {
    const Bus::BusHandle bus = OpenBusAs(Address(), user);
    std::vector<std::string> errors;
    for (const auto& [interface, member] : {std::pair("com.talo.Wifi1.General", "GetNetworkSettings"),
                                            std::pair("com.talo.Wifi1.Mesh", "GetBackhaulSetting"),
                                            std::pair("com.talo.Wifi1.Topology", "GetContext"),
                                            std::pair("com.talo.Wifi1.Tool", "RestartNetworks"),
                                            std::pair("org.freedesktop.DBus.Introspectable", "Introspect"),
                                            std::pair("org.freedesktop.DBus.Peer", "Ping"),
                                            std::pair("org.freedesktop.DBus.Properties", "GetAll")}) {
      const std::string error = ErrorOf(bus, interface, member);
      errors.push_back(std::string(interface) + " " + error.substr(0, error.find(':')));
    }
    return errors;
  }
  static std::vector<std::string> AllAnswered() {
    // Where arguments are missing it is the daemon who says so.
    return {"com.talo.Wifi1.General none",
            "com.talo.Wifi1.Mesh none",
            "com.talo.Wifi1.Topology none",
            "com.talo.Wifi1.Tool org.freedesktop.DBus.Error.InvalidArgs",
            "org.freedesktop.DBus.Introspectable none",
            "org.freedesktop.DBus.Peer none",
            "org.freedesktop.DBus.Properties org.freedesktop.DBus.Error.InvalidArgs"};
  }
  static std::vector<std::string> AllDenied() {
    const std::string denied = " org.freedesktop.DBus.Error.AccessDenied";
    return {"com.talo.Wifi1.General" + denied,
            "com.talo.Wifi1.Mesh" + denied,
            "com.talo.Wifi1.Topology" + denied,
            "com.talo.Wifi1.Tool" + denied,
            "org.freedesktop.DBus.Introspectable" + denied,
            "org.freedesktop.DBus.Peer" + denied,
            "org.freedesktop.DBus.Properties" + denied};
  }

  std::string ErrorOfOwning(const User& user) {
    const Bus::BusHandle bus = OpenBusAs(Address(), user);
    const int result = sd_bus_request_name(bus.get(), "com.talo.Wifi1", SD_BUS_NAME_REPLACE_EXISTING);
    return result < 0 ? std::strerror(-result) : "none";
  }

  /// How many of the daemon's signals a user receives while a network is made.
  std::size_t SignalsAs(const User& user) {
    const Bus::BusHandle bus = OpenBusAs(Address(), user);
    // Not by the sender's name, which would be for the bus to look up.
    Bus::CheckMessage(sd_bus_add_match(bus.get(), nullptr, "type='signal',interface='com.talo.Wifi1.General'",
                                       nullptr, nullptr));
    ++networks_;
    CreateNetwork("Network " + std::to_string(networks_), networks_);
    // The answer of the bus comes behind all that it passed on before.
    EXPECT_EQ(
        ErrorOf(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"),
        "none");
    std::size_t signals = 0;
    for (;;) {
      sd_bus_message* received = nullptr;
      if (Bus::CheckMessage(sd_bus_process(bus.get(), &received)) == 0) {
        return signals;
      }
      const Bus::Message message(received);
      if (message && sd_bus_message_is_signal(message.get(), "com.talo.Wifi1.General", nullptr) > 0) {
        ++signals;
      }
    }
  }

  int networks_ = 0;
};

TEST_F(Access, IsForTheGroupNetdevByThePolicyAndByDefault) {
  const std::string policy = ShippedPolicy();
  EXPECT_NE(policy.find("<policy group=\"netdev\">"), std::string::npos);
  EXPECT_EQ(policy.find("group=\""), policy.rfind("group=\""));
}

TEST_F(Access, IsNamedRuleByRuleForThisDaemonAlone) {
  const std::string policy = ShippedPolicy();
  const std::regex rule("<(allow|deny) [^>]*>");
  std::size_t rules = 0;
  for (std::sregex_iterator found(policy.begin(), policy.end(), rule), end; found != end; ++found, ++rules) {
    const std::string text = found->str();
    const bool isOurs = text.find(" own=\"com.talo.Wifi1\"") != std::string::npos ||
                        text.find(" send_destination=\"com.talo.Wifi1\"") != std::string::npos ||
                        text.find(" receive_sender=\"com.talo.Wifi1\"") != std::string::npos;
    EXPECT_TRUE(isOurs) << text;
    if (text.starts_with("<allow send_")) {
      EXPECT_NE(text.find(" send_interface=\""), std::string::npos) << text;
    }
  }
  EXPECT_EQ(rules, 23U);
}

TEST_F(Access, IsRootsByTheShippedPolicy) {
  StartOnShippedPolicy();
  EXPECT_EQ(ErrorsAs({0, 0}), AllAnswered());
  CreateNetwork("Home", 1);
  EXPECT_EQ(RunTool({"modifyLogLevel", "--level", "Debug"}), Success());
  EXPECT_EQ(TestConnection(Address()).GetLogLevel(), "debug");
}

TEST_F(Access, IsTheGroupsByTheShippedPolicy) {
  StartOnShippedPolicy();
  EXPECT_EQ(ErrorsAs(MemberOfGroup()), AllAnswered());
  TestConnection member(OpenBusAs(Address(), MemberOfGroup()));
  member.SetLogLevel("warning");
  EXPECT_EQ(member.GetLogLevel(), "warning");
}

TEST_F(Access, IsNobodyElsesByTheShippedPolicy) {
  StartOnShippedPolicy();
  EXPECT_EQ(ErrorsAs(kNobody), AllDenied());
  EXPECT_THROW(TestConnection(OpenBusAs(Address(), kNobody)).GetLogLevel(), CallError);
  // It was the bus.
  EXPECT_EQ(Daemon().GetProcess().Errors().find("may not call"), std::string::npos);
}

TEST_F(Access, IsRootsAloneWhereTheGroupDoesNotExist) {
  StartOnBus({.policyFile = std::regex_replace(ShippedPolicy(), std::regex("netdev"), "no-such-group")});
  EXPECT_EQ(ErrorsAs({0, 0}), AllAnswered());
  EXPECT_EQ(ErrorsAs(MemberOfGroup()), AllDenied());
}

TEST_F(Access, IsNotToTheDaemonsName) {
  StartBus({.policyFile = PolicyOfGroup()});
  EXPECT_EQ(ErrorOfOwning(kNobody), "Permission denied");
  EXPECT_EQ(ErrorOfOwning(MemberOfGroup()), "Permission denied");
  EXPECT_EQ(ErrorOfOwning({0, 0}), "none");
}

TEST_F(Access, IsNeededForTheSignals) {
  StartOnShippedPolicy();
  EXPECT_EQ(SignalsAs({0, 0}), 1U);
  EXPECT_EQ(SignalsAs(MemberOfGroup()), 1U);
  EXPECT_EQ(SignalsAs(kNobody), 0U);
}

// The policy knows a signal by the name of its sender, which the daemon does not have while it starts.
TEST_F(Access, CannotBeHadBySignalsThatAreSentBeforeTheDaemonHasItsName) {
  StartOnBus({});
  CreateNetwork("Home", 1);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  BusMonitor monitor(Address());
  StartDaemon();
  EXPECT_EQ(monitor.SignalsUntilCall("RequestName").find("com.talo.Wifi1.General"), std::string::npos);
}

TEST_F(Access, IsCheckedByTheDaemonWhereThePolicyIsLoose) {
  StartOnBus({});
  EXPECT_EQ(ErrorsAs({0, 0}), AllAnswered());
  EXPECT_EQ(ErrorsAs(MemberOfGroup()), AllAnswered());
  EXPECT_EQ(ErrorsAs(kNobody), AllDenied());
  EXPECT_THROW(TestConnection(OpenBusAs(Address(), kNobody)).SetLogLevel("err"), CallError);
  EXPECT_EQ(TestConnection(Address()).GetLogLevel(), "debug");
  EXPECT_EQ(ErrorOf(OpenBusAs(Address(), kNobody), "com.talo.Wifi1.General", "GetNetworkSettings"),
            "org.freedesktop.DBus.Error.AccessDenied: user 65534 may not call "
            "com.talo.Wifi1.General.GetNetworkSettings");
}

TEST_F(Access, IsForNoGroupWhereTheOptionNamesNone) {
  StartOnBus({}, "no-such-group");
  EXPECT_EQ(ErrorsAs({0, 0}), AllAnswered());
  EXPECT_EQ(ErrorsAs(MemberOfGroup()), AllDenied());
  EXPECT_NE(
      Daemon().GetProcess().Errors().find("warning: the group \"no-such-group\" of the option access-group "
                                          "does not exist: nobody but root and user 0 may use the daemon\n"),
      std::string::npos);
}

TEST_F(Access, IsDeniedToTheToolInTheSameWordsByBusAndDaemon) {
  const auto runAsNobody = [this](const Words& words) {
    ProcessSetup setup = ToolProcess(Address(), words);
    setup.asNobody = true;
    Process tool(setup);
    return Finish(tool);
  };
  for (const BusSetup& bus : {BusSetup{}, BusSetup{.policyFile = PolicyOfGroup()}}) {
    StartOnBus(bus);
    const ToolRun run = runAsNobody({"getNetworks"});
    if (run.status == 127) {
      GTEST_SKIP() << "other users cannot reach the tool in this directory: it is NOT tested as one of them";
    }
    EXPECT_EQ(run, Failure("the bus does not let this user talk to the wifi daemon (GetNetworkSettings): "
                           "Access denied\n"));
  }
}

}  // namespace

}  // namespace TALO::EndToEnd
