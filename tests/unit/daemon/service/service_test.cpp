#include "support/service_test.h"

#include "bus/names.h"

#include <map>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Wifi::WifiClient;
using Wifi::WifiClientForTool;

class Services : public ServiceTest {
 protected:
  Picture Now() const { return {two_, driver_.GetCapabilities(), live_}; }

  const std::vector<LiveRadio> live_ = LiveOf(two_);
};

TEST_F(Services, AnswerEveryQuestionWithItsOwnView) {
  EXPECT_EQ(Value<&WifiClient::GetNetworkSettings>(), NetworkSettings(Now()));
  EXPECT_EQ(Value<&WifiClient::GetNetworkSetting>(2), NetworkSettingOf(Now(), two_.networks[1]));
  EXPECT_EQ(Value<&WifiClient::GetNetworkInterfaces>(), NetworkInterfaces(Now()));
  EXPECT_EQ(Value<&WifiClient::IsAllNetworkAPDisabled>(), false);
  EXPECT_EQ(Value<&WifiClient::GetDevices>(), ConnectedDevices(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioSettings>(), RadioSettings(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioStatuses>(), RadioStatuses(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioStatusesSimple>(), RadioStatusesSimple(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioIfStatuses>(), RadioIfStatuses(Now()));
  EXPECT_EQ(Value<&WifiClient::GetNetworkInterfaceRadioMap>(), InterfaceRadioMap(Now()));
  EXPECT_EQ(Value<&WifiClient::GetRadioConversionInfo>(), ConversionInfo(Now()));
  EXPECT_EQ(Value<&WifiClient::GetStationSettings>(), two_.stations);
  EXPECT_EQ(Value<&WifiClient::GetStationStatuses>(), StationStatuses(Now()));
  EXPECT_EQ(Value<&WifiClient::GetStationInterfaces>(), StationInterfaces(Now()));
  EXPECT_EQ(TakeJournal(), Journal{});
}

TEST_F(Services, CreateAndDeleteNetworks) {
  EXPECT_EQ(Value<&WifiClient::CreateNetwork>(InfoOf("Three")), 3);
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3"), Journal{"announce networks"}));
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1), "none");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 2 3"}, AppliedOnAll("2 3"), Journal{"announce networks"}));
}

TEST_F(Services, GiveANewNetworkTheTimeAndTheBridge) {
  clock_.now = 4107542400;
  EXPECT_EQ(Value<&WifiClient::CreateNetwork>(InfoOf("Three")), 3);
  NetworkState expected = MakeNetwork(3, 3, "Three");
  expected.passphraseChangedAt = 4107542400;
  expected.bridge = "br-lan";
  ASSERT_EQ(engine_->GetState().networks.size(), 3U);
  EXPECT_EQ(engine_->GetState().networks[2], expected);
}

TEST_F(Services, TakeEveryByteOfAnSSID) {
  const std::string ssid("\x00\xff\n\xc3", 4);
  EXPECT_EQ(Value<&WifiClient::CreateNetwork>(Wifi::NetworkCreateInfo{"Raw", ssid, "battery-staple"}), 3);
  EXPECT_EQ(Value<&WifiClient::GetNetworkSetting>(3).ssid, ssid);
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
  EXPECT_EQ(ErrorOfCall<&WifiClient::GetNetworkSetting>(7),
            "com.talo.Wifi1.Error.NotFound: there is no network 7");
  store_.FailNext("the disk is full");
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1),
            "com.talo.Wifi1.Error.StorageFailed: the disk is full");
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1),
            "com.talo.Wifi1.Error.RadioFailed: wlan1 does not come up");
}

TEST_F(Services, RestartWithAndWithoutForce) {
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RestartNetworks>(false), "none");
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2"));
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RestartNetworks>(true), "none");
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2", "apply everything"));
}

TEST_F(Services, AnswerQuestionsWhileAChangeIsUnderWay) {
  const auto cookie = Send<&WifiClient::DeleteNetwork>(1);
  pair_.RunUntilQuiet();
  const auto question = Send<&WifiClient::GetRadioIfStatuses>();
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(question)), "none");
  EXPECT_EQ(pair_.CountAnswers(cookie), 0U);
  EXPECT_EQ(ErrorOf(Settle(cookie)), "none");
  EXPECT_EQ(Value<&WifiClient::GetNetworkSettings>().size(), 1U);
}

TEST_F(Services, AnswerScansAndStations) {
  Wifi::ScanResult heard;
  heard.radio = Band5GHz_2;
  heard.ssid = "\xff";
  driver_.inTheAir[Band5GHz_2] = {heard};
  EXPECT_EQ(Value<&WifiClient::GetScanResults>(SmartConnect), (std::vector<Wifi::ScanResult>{heard}));
  EXPECT_EQ(Value<&WifiClient::GetScanResults>(Band2_4GHz), std::vector<Wifi::ScanResult>{});
  TakeJournal();
  EXPECT_EQ(ErrorOfCall<&WifiClient::ModifyStation>(Joined(Band5GHz_1, "Cafe")), "none");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band5GHz_1: 1 2, joins Cafe"}));
  EXPECT_EQ(Value<&WifiClient::GetStationSettings>()[1], Joined(Band5GHz_1, "Cafe"));
  EXPECT_EQ(ErrorOfCall<&WifiClient::ReconnectAllSTA>(), "none");
  EXPECT_EQ(TakeJournal(), (Journal{"reconnect Band2_4GHz", "reconnect Band5GHz_1", "reconnect Band5GHz_2"}));
}

TEST_F(Services, CarryMACFiltersThrough) {
  const Wifi::MACFilterProfile profile{
      -1, "Kids", Wifi::MACFilterAction::Deny, {{"Tablet", Wifi::Util::MACAddress("02:aa:00:00:00:01")}}};
  EXPECT_EQ(Value<&WifiClient::CreateMACFilterProfile>(profile, false), 1);
  EXPECT_EQ(Value<&WifiClient::CreateMACFilterProfile>(profile, true), 2);
  EXPECT_EQ(engine_->GetState().networks[0].macFilterProfileId, 2);
  EXPECT_EQ(ErrorOfCall<&WifiClient::AssignMACFilterProfile>(2, 1), "none");
  EXPECT_EQ(engine_->GetState().networks[1].macFilterProfileId, 1);
  auto modified = profile;
  modified.id = 1;
  modified.action = Wifi::MACFilterAction::Allow;
  EXPECT_EQ(ErrorOfCall<&WifiClient::ModifyMACFilterProfile>(modified), "none");
  EXPECT_EQ(Value<&WifiClient::GetMACFilterProfiles>()[0], modified);
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteMACFilterProfiles>(std::set<int>{1, 2}), "none");
  EXPECT_EQ(Value<&WifiClient::GetMACFilterProfiles>(), std::vector<Wifi::MACFilterProfile>{});
  const Wifi::MACFilterGlobal global{profile.devices, true, 100};
  EXPECT_EQ(ErrorOfCall<&WifiClient::SetMACFilterGlobal>(global), "none");
  EXPECT_EQ(Value<&WifiClient::GetMACFilterGlobal>(), global);
}

TEST_F(Services, SetAScheduleAndWakeForIt) {
  EXPECT_EQ(ErrorOfCall<&WifiClient::SetSchedule>(
                Wifi::NetworkSchedule{2, Band5GHz_1, ScheduleMode::ValidFor, 60, {}}),
            "none");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "announce networks"}));
  EXPECT_EQ(timers_.UntilNext(), std::chrono::seconds(60));
  EXPECT_EQ(Value<&WifiClient::GetScheduleStatus>(),
            (Wifi::ScheduleStatus{{2, {{Band5GHz_1, ScheduleMode::ValidFor, 60}}}}));
  clock_.now += 60;
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::UpdateSchedule>(ScheduleMode::ValidFor), "none");
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.CountWaiting(), 0U);
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::UpdateSchedule>(ScheduleMode::Error),
            "com.talo.Wifi1.Error.InvalidArgument: the schedule mode Error does not exist");
}

TEST_F(Services, RotateAPassphraseToOneThatWasDrawn) {
  clock_.now = 5000;
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RotatePassword>(Wifi::NetworkRadioPair{2, SmartConnect}), "none");
  const NetworkState& network = engine_->GetState().networks[1];
  EXPECT_EQ(network.passphrase.size(), 20U);
  EXPECT_NE(network.passphrase, two_.networks[1].passphrase);
  EXPECT_EQ(network.passphraseChangedAt, 5000);
  EXPECT_EQ(engine_->GetState().networks[0], two_.networks[0]);
}

TEST_F(Services, RefuseARotationWithoutRandomnessAndGoOn) {
  random_.broken = true;
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::RotatePassword>(Wifi::NetworkRadioPair{2, SmartConnect}),
            "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: no randomness");
  EXPECT_EQ(engine_->GetState(), two_);
  EXPECT_EQ(ErrorOfCall<&WifiClient::DeleteNetwork>(1), "none");
}

TEST_F(Services, OpenAndEndWPSSessions) {
  EXPECT_EQ(Value<&WifiClient::GetDefaultWPSTarget>(), (Wifi::NetworkRadioPair{1, Band2_4GHz}));
  EXPECT_EQ(Value<&WifiClient::IsWPS_PBCAvailable>(Wifi::NetworkRadioPair{2, Band5GHz_1}), true);
  EXPECT_EQ(ErrorOfCall<&WifiClient::TriggerWPS_PBC>(Wifi::NetworkRadioPair{2, Band5GHz_1}), "none");
  EXPECT_EQ(Value<&WifiClient::IsWPS_PBCAvailable>(Wifi::NetworkRadioPair{1, Band2_4GHz}), false);
  EXPECT_EQ(ErrorOfCall<&WifiClient::TriggerHWButton>(),
            "com.talo.Wifi1.Error.Busy: a WPS session runs on the interface \"wlan1_2\"");
  EXPECT_EQ(ErrorOfCall<&WifiClient::TriggerWPSConnected>(std::string("wlan1_2")), "none");
  EXPECT_EQ(ErrorOfCall<&WifiClient::TriggerHWButton>(), "none");
  EXPECT_EQ(ErrorOfCall<&WifiClientForTool::WPSERConfig>(
                Wifi::WPS_ERConfigInput{"wlan1_2", "Two", "battery-staple", "PersonalWPA2"}),
            "none");
  EXPECT_EQ(TakeJournal(),
            (Journal{"start WPS wlan1_2", "cancel WPS wlan1_2", "start WPS wlan0_1", "registrar wlan1_2"}));
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

TEST_F(Services, OfferTheLogToo) {
  const Bus::Message call =
      pair_.NewCall("/org/freedesktop/LogControl1", "org.freedesktop.DBus.Properties", "Get");
  Bus::ArgumentsCodec<std::string, std::string>::Append(call.get(), "org.freedesktop.LogControl1",
                                                        "LogLevel");
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(pair_.Send(call.get()))), "none");
}

TEST_F(Services, OfferEverySignal) {
  const Bus::Message call = pair_.NewCall("org.freedesktop.DBus.Introspectable", "Introspect");
  const std::string xml = Bus::Codec<std::string>::Read(pair_.WaitForAnswer(pair_.Send(call.get())));
  for (const char* part : {
           "  <signal name=\"NetworksChanged\">\n  </signal>\n",
           "  <signal name=\"StationConnected\">\n"
           "   <arg type=\"s\" name=\"address\"/>\n"
           "   <arg type=\"i\" name=\"networkId\"/>\n"
           "   <arg type=\"s\" name=\"interface\"/>\n"
           "  </signal>\n",
           "   <arg type=\"s\" name=\"reason\"/>\n",
           "  <signal name=\"RadioStateChanged\">\n"
           "   <arg type=\"i\" name=\"radio\"/>\n"
           "   <arg type=\"b\" name=\"up\"/>\n"
           "  </signal>\n",
           "  <signal name=\"WPSFinished\">\n"
           "   <arg type=\"s\" name=\"interface\"/>\n"
           "   <arg type=\"s\" name=\"outcome\"/>\n"
           "  </signal>\n",
       }) {
    EXPECT_NE(xml.find(part), std::string::npos) << part << "\nis not in\n" << xml;
  }
}

}  // namespace

}  // namespace TALO::Wifid
