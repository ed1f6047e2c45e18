#include "daemon/service/service.h"

#include "bus/names.h"
#include "support/bus_pair.h"
#include "support/engine_test.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Wifi::WifiClient;
using Wifi::WifiClientForMesh;
using Wifi::WifiClientForTool;
using Wifi::WifiClientForTopo;

/// The daemon's objects over an engine with the networks 1 and 2.
class Services : public EngineTest {
 protected:
  Services() { service_.Attach(pair_.Server()); }

  template <auto Method, typename... Arguments>
  sd_bus_message* Call(const Arguments&... arguments) {
    const Bus::Message call = pair_.NewCall(Bus::InterfaceOf<Method>::name.text, Bus::NameOf<Method>());
    Bus::MethodTraits<Method>::ArgumentsCodec::Append(call.get(), arguments...);
    return pair_.WaitForAnswer(pair_.Send(call.get()));
  }

  /// The error of the answer, "none" for success.
  template <auto Method, typename... Arguments>
  std::string ErrorOfCall(const Arguments&... arguments) {
    return ErrorOf(Call<Method>(arguments...));
  }

  /// The value of the answer.
  template <auto Method, typename... Arguments>
  auto Value(const Arguments&... arguments) {
    sd_bus_message* answer = Call<Method>(arguments...);
    if (ErrorOf(answer) != "none") {
      throw std::runtime_error(ErrorOf(answer));
    }
    return Bus::MethodTraits<Method>::ResultCodec::Read(answer);
  }

  Picture Now() const { return {state_, radios_, live_}; }

  const State state_ = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const Capabilities radios_ = TriBandRadios();
  const std::vector<LiveRadio> live_ = LiveAsPlanned(MakePlan(state_, radios_));
  Service service_{*engine_, log_};
  BusPair pair_;
};

TEST_F(Services, AnswerEveryQuestionWithItsOwnView) {
  EXPECT_EQ(Value<&WifiClient::GetNetworkSettings>(), NetworkSettings(Now()));
  EXPECT_EQ(Value<&WifiClient::GetNetworkInterfaces>(), NetworkInterfaces(Now()));
  EXPECT_EQ(Value<&WifiClient::IsAllNetworkAPDisabled>(), false);
  EXPECT_EQ(Value<&WifiClient::GetRadioSettings>(), RadioSettings(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioStatuses>(), RadioStatuses(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioStatusesSimple>(), RadioStatusesSimple(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioIfStatuses>(), RadioIfStatuses(Now()));
  EXPECT_EQ(Value<&WifiClient::GetNetworkInterfaceRadioMap>(), InterfaceRadioMap(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioConversionInfo>(), ConversionInfo(Now()));
  EXPECT_EQ(journal_, Journal{});
}

TEST_F(Services, CreateAndDeleteNetworks) {
  EXPECT_EQ(Value<&WifiClient::CreateNetwork>(InfoOf("Three")), 3);
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3"}));
  journal_.clear();
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1), "none");
  EXPECT_EQ(journal_, (Journal{"save 2 3", "apply 2 3"}));
}

TEST_F(Services, TakeEveryByteOfAnSSID) {
  const std::string ssid("\x00\xff\n\xc3", 4);
  EXPECT_EQ(Value<&WifiClient::CreateNetwork>(Wifi::NetworkCreateInfo{"Raw", ssid, "battery-staple"}), 3);
  const auto networks = Value<&WifiClient::GetNetworkSettings>();
  ASSERT_EQ(networks.size(), 3U);
  EXPECT_EQ(networks[2].ssid, ssid);
}

TEST_F(Services, RefuseWithTheReason) {
  EXPECT_EQ(ErrorOfCall<&WifiClient::CreateNetwork>(InfoOf("Two")),
            "com.talo.Wifi1.Error.AlreadyExists: the SSID \"Two\" is in use by network 2");
  EXPECT_EQ(
      ErrorOfCall<&WifiClient::CreateNetwork>(Wifi::NetworkCreateInfo{"N", "\xff\n", "secret!"}),
      "com.talo.Wifi1.Error.InvalidArgument: the passphrase has 7 characters, it must have 8 to 63, or 64 "
      "hexadecimal digits");
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(7),
            "com.talo.Wifi1.Error.NotFound: there is no network 7");
  store_.FailNext("the disk is full");
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1),
            "com.talo.Wifi1.Error.StorageFailed: the disk is full");
  driver_.FailNext("wlan1 does not come up");
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1),
            "com.talo.Wifi1.Error.RadioFailed: wlan1 does not come up");
}

TEST_F(Services, RestartWithAndWithoutForce) {
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RestartNetworks>(false), "none");
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RestartNetworks>(true), "none");
  EXPECT_EQ(journal_, (Journal{"apply 1 2", "apply everything 1 2"}));
}

TEST_F(Services, SetEveryLogLevel) {
  using Wifi::Util::LogLevel;
  const std::map<LogLevel, Severity> rows = {{LogLevel::Error, Severity::Error},
                                             {LogLevel::Warning, Severity::Warning},
                                             {LogLevel::Information, Severity::Information},
                                             {LogLevel::Debug, Severity::Debug}};
  for (const auto& [level, severity] : rows) {
    EXPECT_EQ(ErrorOfCall<&WifiClientForTool::SetLogLevel>(level), "none");
    EXPECT_EQ(log_.GetLevel(), severity);
  }
}

TEST_F(Services, RefuseALogLevelThatDoesNotExist) {
  for (const int level : {-1, 4, 2147483647}) {
    EXPECT_EQ(
        ErrorOfCall<&WifiClientForTool::SetLogLevel>(static_cast<Wifi::Util::LogLevel>(level)),
        "com.talo.Wifi1.Error.InvalidArgument: the log level " + std::to_string(level) + " does not exist");
  }
  EXPECT_EQ(log_.GetLevel(), Severity::Debug);
}

TEST_F(Services, OfferEveryInterfaceAndTheLog) {
  const std::string unsupported = "com.talo.Wifi1.Error.NotSupported: the wifi daemon does not support ";
  for (const std::string& error : {ErrorOfCall<&WifiClientForMesh::GetBackhaulSetting>(),
                                   ErrorOfCall<&WifiClientForTopo::GetContext>()}) {
    EXPECT_TRUE(error == "none" || error.starts_with(unsupported)) << error;
  }
  const Bus::Message call =
      pair_.NewCall("/org/freedesktop/LogControl1", "org.freedesktop.DBus.Properties", "Get");
  Bus::ArgumentsCodec<std::string, std::string>::Append(call.get(), "org.freedesktop.LogControl1",
                                                        "LogLevel");
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(call.get()))), "none");
}

TEST_F(Services, AnswerQuestionsWhileAChangeIsUnderWay) {
  driver_.Hold();
  const Bus::Message call = pair_.NewCall("com.talo.Wifi1.General", "DeleteNetwork");
  Bus::Codec<int>::Append(call.get(), 1);
  const auto cookie = pair_.Send(call.get());
  EXPECT_EQ(Value<&WifiClient::GetNetworkSettings>().size(), 2U);
  EXPECT_EQ(pair_.CountAnswers(cookie), 0U);
  driver_.Finish();
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(cookie)), "none");
  EXPECT_EQ(Value<&WifiClient::GetNetworkSettings>().size(), 1U);
}

}  // namespace

}  // namespace TALO::Wifid
