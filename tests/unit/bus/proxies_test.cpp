#include "bus/connection.h"
#include "bus/log_level.h"
#include "client/log_level_helper.h"
#include "support/bus_peer.h"
#include "support/full_values.h"
#include "support/print.h"
#include "support/thrown.h"
#include "support/wire_table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace TALO::Wifi::Bus {

namespace {

/// The clients that programs get, with a system bus and a daemon that the test plays.
class ClientOnTheBus : public testing::Test {
 protected:
  ~ClientOnTheBus() override {
    bus_.reset();
    // This process's connection notices only when it is used; the next test shall open its own.
    Catch([] { QueryLogLevel(); });
  }

  PeerScript& Daemon() { return bus_->Script(); }

  std::optional<SystemBus> bus_ = std::optional<SystemBus>(std::in_place);
};

template <typename Client>
struct FactoryOf;
template <>
struct FactoryOf<WifiClient> : WifiClientFactory {};
template <>
struct FactoryOf<WifiClientForMesh> : WifiClientFactoryForMesh {};
template <>
struct FactoryOf<WifiClientForTopo> : WifiClientFactoryForTopo {};
template <>
struct FactoryOf<WifiClientForTool> : WifiClientFactoryForTool {};

/// Calls a client's method with full values; both ends must see the same arguments and result.
template <typename Interface>
void ExpectCarried(PeerScript& daemon) {
  Interface::ForEach([&daemon](auto row) {
    using Row = decltype(row);
    using Arguments = typename Row::Arguments;
    using Result = typename Row::Result;
    SCOPED_TRACE(Row::name.text);
    std::mutex mutex;
    std::optional<Arguments> arrived;
    daemon.SetAnswer([&mutex, &arrived](sd_bus_message* call) {
      {
        const std::lock_guard lock(mutex);
        arrived = Row::ArgumentsCodec::Read(call);
      }
      SendReply(call, []([[maybe_unused]] sd_bus_message* reply) {
        if constexpr (!std::is_void_v<Result>) {
          Row::ResultCodec::Append(reply, FullValue<Result>());
        }
      });
      return true;
    });

    const auto client = FactoryOf<typename Row::Client>::GetInstance();
    const auto arguments = FullValue<Arguments>();
    const auto call = [&client](const auto&... each) { return ((*client).*Row::method)(each...); };
    if constexpr (std::is_void_v<Result>) {
      std::apply(call, arguments);
    } else {
      EXPECT_EQ(std::apply(call, arguments), FullValue<Result>());
    }

    const WireRow expected = FindWireRow(Interface::name.text, Row::name.text);
    EXPECT_EQ(daemon.Calls().back(), (ReceivedCall{"com.talo.Wifi1", "/com/talo/Wifi1", expected.interface,
                                                   expected.name, expected.arguments}));
    const std::lock_guard lock(mutex);
    EXPECT_TRUE(arrived == arguments);
  });
  EXPECT_EQ(daemon.Calls().size(), Interface::size);
}

TEST_F(ClientOnTheBus, CarriesEveryOperationOfTheGeneralClient) { ExpectCarried<General>(Daemon()); }
TEST_F(ClientOnTheBus, CarriesEveryOperationOfTheMeshClient) { ExpectCarried<Mesh>(Daemon()); }
TEST_F(ClientOnTheBus, CarriesEveryOperationOfTheTopologyClient) { ExpectCarried<Topology>(Daemon()); }
TEST_F(ClientOnTheBus, CarriesEveryOperationOfTheToolClient) { ExpectCarried<Tool>(Daemon()); }

TEST_F(ClientOnTheBus, ThrowsWhatTheDaemonRefuses) {
  Daemon().SetAnswer(ReplyWithError("com.talo.Wifi1.Error.LimitReached", "the radio carries 8 networks"));
  const auto client = WifiClientFactory::GetInstance();
  EXPECT_EQ(
      Catch([&] { client->CreateNetwork({}); }),
      (Thrown{Thrown::Refusal, ErrorCode::LimitReached, "the radio carries 8 networks: Limit reached"}));
}

TEST_F(ClientOnTheBus, SharesOneConnectionWithTheOthersOfItsProcess) {
  Daemon().SetAnswer(
      ReplyWith([](sd_bus_message* reply) { MustSucceed(sd_bus_message_append(reply, "b", 1)); }));
  EXPECT_TRUE(WifiClientFactory::GetInstance()->IsAllNetworkAPDisabled());
  EXPECT_TRUE(WifiClientFactoryForMesh::GetInstance()->IsWifiAdjustNeeded());
  EXPECT_EQ(Catch([] { WifiClientFactoryForTopo::GetInstance()->GetContext(); }).code,
            make_error_code(ErrorCode::BadReply));
  EXPECT_EQ(Catch([] { WifiClientFactoryForTool::GetInstance()->RestartNetworks(true); }).code,
            make_error_code(ErrorCode::BadReply));
  EXPECT_EQ(bus_->Connections(), 1);
}

TEST_F(ClientOnTheBus, IsConnectedAnewAfterTheBusWentAway) {
  Daemon().SetAnswer([](sd_bus_message*) { return false; });
  EXPECT_EQ(Catch([] { WifiClientFactoryForTopo::GetInstance()->GetContext(); }),
            (Thrown{Thrown::Failure, ErrorCode::DaemonGone,
                    "the bus went away before the wifi daemon answered (GetContext): Daemon gone"}));
  Daemon().SetAnswer(ReplyWith([](sd_bus_message* reply) { Codec<std::string>::Append(reply, "router"); }));
  EXPECT_EQ(WifiClientFactoryForTopo::GetInstance()->GetContext(), "router");
  EXPECT_EQ(bus_->Connections(), 2);
}

TEST_F(ClientOnTheBus, CannotBeObtainedWithoutABus) {
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/socket", 1);
  const Thrown expected = {Thrown::Failure, ErrorCode::BusUnavailable,
                           "the system bus cannot be reached (No such file or directory): Bus unavailable"};
  EXPECT_EQ(Catch([] { WifiClientFactory::GetInstance(); }), expected);
  EXPECT_EQ(Catch([] { WifiClientFactoryForMesh::GetInstance(); }), expected);
  EXPECT_EQ(Catch([] { WifiClientFactoryForTopo::GetInstance(); }), expected);
  EXPECT_EQ(Catch([] { WifiClientFactoryForTool::GetInstance(); }), expected);
  EXPECT_EQ(Catch([] { Wifi::Daemon::LogLevelHelper::IsDebugLogLevel(); }), expected);
}

class DebugLogLevel : public ClientOnTheBus {};

TEST_F(DebugLogLevel, IsAskedOfTheDaemonsLogControl) {
  std::mutex mutex;
  std::tuple<std::string, std::string> asked;
  Daemon().SetAnswer([&](sd_bus_message* call) {
    {
      const std::lock_guard lock(mutex);
      asked = ArgumentsCodec<std::string, std::string>::Read(call);
    }
    MustSucceed(sd_bus_reply_method_return(call, "v", "s", "debug"));
    return true;
  });
  EXPECT_TRUE(Wifi::Daemon::LogLevelHelper::IsDebugLogLevel());
  EXPECT_EQ(Daemon().Calls(), (std::vector<ReceivedCall>{{"com.talo.Wifi1", "/org/freedesktop/LogControl1",
                                                          "org.freedesktop.DBus.Properties", "Get", "ss"}}));
  const std::lock_guard lock(mutex);
  EXPECT_EQ(asked, (std::tuple<std::string, std::string>{"org.freedesktop.LogControl1", "LogLevel"}));
}

TEST_F(DebugLogLevel, IsOnlyTheWordDebug) {
  for (const std::string level : {"info", "err", "warning", "", "Debug", "debug "}) {
    Daemon().SetAnswer([&level](sd_bus_message* call) {
      MustSucceed(sd_bus_reply_method_return(call, "v", "s", level.c_str()));
      return true;
    });
    EXPECT_FALSE(Wifi::Daemon::LogLevelHelper::IsDebugLogLevel()) << level;
    EXPECT_EQ(QueryLogLevel(), level);
  }
}

TEST_F(DebugLogLevel, CannotBeLearnedFromADaemonThatDoesNotRun) {
  Daemon().SetAnswer(ReplyWithError("org.freedesktop.DBus.Error.ServiceUnknown", "no such name"));
  EXPECT_EQ(Catch([] { Wifi::Daemon::LogLevelHelper::IsDebugLogLevel(); }),
            (Thrown{Thrown::Failure, ErrorCode::DaemonNotRunning,
                    "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running"}));
}

}  // namespace

}  // namespace TALO::Wifi::Bus
