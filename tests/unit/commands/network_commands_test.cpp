#include "support/command_test.h"
#include "values/errors.h"

namespace TALO::Tool {

using talo::dbus::DbusError;
using Wifi::ErrorCode;
using Wifi::NetworkRadioSetting;
using Wifi::NetworkSetting;
using Wifi::WifiException;
using Wifi::Util::RadioFrequency;
using Wifi::Util::SecurityMode;

namespace {

class GetNetworks : public CommandTest {};
class GetNetworkInterfaces : public CommandTest {};
class CreateNetwork : public CommandTest {
 protected:
  /// Expects `ssid` and `password` to arrive as `listed` is written.
  void expectSent(const std::string& ssid, const std::string& listedSSID, const std::string& password,
                  const std::string& listedPassword) {
    SCOPED_TRACE(listedSSID + " and " + listedPassword);
    daemon_.calls.clear();
    const ToolRun run = runTool({"createNetwork", "--ssid", ssid, "--password", password});
    EXPECT_EQ(run.output, "Create Network ID: 0\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient,
                                    "CreateNetwork({networkName=" + listedSSID + ", ssid=" + listedSSID +
                                        ", passphrase=" + listedPassword + "})"}));
  }
};
class DeleteNetwork : public CommandTest {};
class RestartNetworks : public CommandTest {};
class IsAllNetworkAPDisabled : public CommandTest {};

/// What `getNetworks` prints of a network that has nothing but an ID.
std::string emptyNetworkJson(const std::string& id) {
  return "\t{\n"
         "\t\t\"activated\" : false,\n"
         "\t\t\"bridge\" : \"\",\n"
         "\t\t\"context\" : \"\",\n"
         "\t\t\"hidden\" : false,\n"
         "\t\t\"id\" : " +
         id +
         ",\n"
         "\t\t\"interfaces\" : [],\n"
         "\t\t\"macFilterProfileId\" : -1,\n"
         "\t\t\"macFilterProfileName\" : \"\",\n"
         "\t\t\"networkName\" : \"\",\n"
         "\t\t\"networkNameHex\" : \"\",\n"
         "\t\t\"passphrase\" : \"\",\n"
         "\t\t\"passphraseChangedAt\" : \"\",\n"
         "\t\t\"radios\" : [],\n"
         "\t\t\"securityMode\" : \"Error\",\n"
         "\t\t\"ssid\" : \"\",\n"
         "\t\t\"ssidHex\" : \"\",\n"
         "\t\t\"up\" : false\n"
         "\t}";
}

TEST_F(GetNetworks, PrintsAnEmptyArrayWhenThereAreNoNetworks) {
  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetNetworkSettings()"}));
}

TEST_F(GetNetworks, PrintsEveryMemberOfANetworkAndOfItsRadios) {
  NetworkRadioSetting radio;
  radio.radio = RadioFrequency::Band5GHz_1;
  radio.enable = true;
  radio.up = true;
  radio.interface = "wlan1";
  radio.radioInterface = "phy1";
  radio.bssid = "02:00:00:00:00:0a";
  radio.ssid = "Home";
  radio.passphrase = "battery-staple";
  radio.passphraseChangedAt = "2026-01-31T12:00:00Z";
  radio.keyManagement = {"WPA-PSK", "SAE"};
  NetworkSetting network;
  network.id = 3;
  network.networkName = "Home";
  network.ssid = "Home";
  network.hidden = true;
  network.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  network.passphrase = "correct-horse";
  network.passphraseChangedAt = "2026-01-30T12:00:00Z";
  network.activated = true;
  network.context = "Router";
  network.bridge = "br0";
  network.macFilterProfileId = 2;
  network.macFilterProfileName = "guests";
  network.interfaces = {"wlan1", "wlan0"};
  network.up = true;
  network.radios = {radio};
  daemon_.networkSettings = {network};

  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"activated\" : true,\n"
            "\t\t\"bridge\" : \"br0\",\n"
            "\t\t\"context\" : \"Router\",\n"
            "\t\t\"hidden\" : true,\n"
            "\t\t\"id\" : 3,\n"
            "\t\t\"interfaces\" : \n"
            "\t\t[\n"
            "\t\t\t\"wlan1\",\n"
            "\t\t\t\"wlan0\"\n"
            "\t\t],\n"
            "\t\t\"macFilterProfileId\" : 2,\n"
            "\t\t\"macFilterProfileName\" : \"guests\",\n"
            "\t\t\"networkName\" : \"Home\",\n"
            "\t\t\"networkNameHex\" : \"486f6d65\",\n"
            "\t\t\"passphrase\" : \"correct-horse\",\n"
            "\t\t\"passphraseChangedAt\" : \"2026-01-30T12:00:00Z\",\n"
            "\t\t\"radios\" : \n"
            "\t\t[\n"
            "\t\t\t{\n"
            "\t\t\t\t\"bssid\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\t\t\"enable\" : true,\n"
            "\t\t\t\t\"interface\" : \"wlan1\",\n"
            "\t\t\t\t\"keyManagement\" : \n"
            "\t\t\t\t[\n"
            "\t\t\t\t\t\"WPA-PSK\",\n"
            "\t\t\t\t\t\"SAE\"\n"
            "\t\t\t\t],\n"
            "\t\t\t\t\"passphrase\" : \"battery-staple\",\n"
            "\t\t\t\t\"passphraseChangedAt\" : \"2026-01-31T12:00:00Z\",\n"
            "\t\t\t\t\"radio\" : \"Band5GHz_1\",\n"
            "\t\t\t\t\"radioInterface\" : \"phy1\",\n"
            "\t\t\t\t\"ssid\" : \"Home\",\n"
            "\t\t\t\t\"ssidHex\" : \"486f6d65\",\n"
            "\t\t\t\t\"up\" : true\n"
            "\t\t\t}\n"
            "\t\t],\n"
            "\t\t\"securityMode\" : \"PersonalWPA2_3Mixed\",\n"
            "\t\t\"ssid\" : \"Home\",\n"
            "\t\t\"ssidHex\" : \"486f6d65\",\n"
            "\t\t\"up\" : true\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetNetworkSettings()"}));
}

TEST_F(GetNetworks, PrintsNetworksInTheDaemonsOrderWithTheirEmptyTexts) {
  daemon_.networkSettings.resize(3);
  daemon_.networkSettings[0].id = 9;
  daemon_.networkSettings[1].id = -2;
  daemon_.networkSettings[2].id = 9;
  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output, "[\n" + emptyNetworkJson("9") + ",\n" + emptyNetworkJson("-2") + ",\n" +
                            emptyNetworkJson("9") + "\n]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetNetworkSettings()"}));
}

TEST_F(GetNetworks, PrintsAnSSIDThatIsNotUTF8ReadablyAndExactly) {
  daemon_.networkSettings.resize(1);
  daemon_.networkSettings[0].ssid = "a\xff\xc3\xa9";
  daemon_.networkSettings[0].securityMode = static_cast<SecurityMode>(12);
  std::string network = emptyNetworkJson("0");
  network.replace(network.find("\"Error\""), 7, "12");
  const std::string ssid = "\"ssid\" : \"\",\n\t\t\"ssidHex\" : \"\"";
  network.replace(network.find(ssid), ssid.size(),
                  "\"ssid\" : \"a\\ufffd\\u00e9\",\n\t\t\"ssidHex\" : \"61ffc3a9\"");
  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output, "[\n" + network + "\n]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetNetworkSettings()"}));
}

TEST_F(GetNetworks, RunsNormallyWithFurtherWordsAndUnknownOptions) {
  const ToolRun run = runTool({"getNetworks", "all", "--verbose", "1", "--id=x"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetNetworkSettings()"}));
}

TEST_F(GetNetworkInterfaces, PrintsASingleEmptyLineForAnEmptyMap) {
  const ToolRun run = runTool({"getNetworkInterfaces"});
  EXPECT_EQ(run.output, "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaces()"}));
}

TEST_F(GetNetworkInterfaces, PrintsOnlyTheIDLineOfANetworkWithoutInterfaces) {
  daemon_.networkInterfaces = {{5, {}}};
  const ToolRun run = runTool({"getNetworkInterfaces"});
  EXPECT_EQ(run.output, "ID: 5, Interface: \n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaces()"}));
}

TEST_F(GetNetworkInterfaces, PrintsNetworksByAscendingIDAndInterfacesByAscendingName) {
  daemon_.networkInterfaces = {{10, {"wlan1", "wlan0", "Wlan2", "wlan10"}}, {-1, {""}}, {2, {"\xff \t"}}};
  const ToolRun run = runTool({"getNetworkInterfaces"});
  EXPECT_EQ(run.output,
            "ID: -1, Interface: \n\t\n"
            "ID: 2, Interface: \n\t\xff \t\n"
            "ID: 10, Interface: \n\tWlan2\n\twlan0\n\twlan1\n\twlan10\n"
            "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaces()"}));
}

TEST_F(CreateNetwork, SendsTheSSIDAsNameToo) {
  daemon_.newNetworkId = 7;
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run.output, "Create Network ID: 7\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{kAskLogLevel, kGetClient,
                   R"(CreateNetwork({networkName="Home", ssid="Home", passphrase="correct-horse"}))"}));
}

TEST_F(CreateNetwork, PrintsANegativeIDAsItComes) {
  daemon_.newNetworkId = -2147483647 - 1;
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run.output, "Create Network ID: -2147483648\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{kAskLogLevel, kGetClient,
                   R"(CreateNetwork({networkName="Home", ssid="Home", passphrase="correct-horse"}))"}));
}

TEST_F(CreateNetwork, PassesBytesOfAnyKind) {
  expectSent("", R"("")", "", R"("")");
  expectSent(" My  Home ", R"(" My  Home ")", " with blanks ", R"(" with blanks ")");
  expectSent("a\xff\xc3\xa9\n", R"("a\xff\xc3\xa9\x0a")", "\x80\x7f", R"("\x80\x7f")");
  expectSent("Caf\xc3\xa9=1", R"("Caf\xc3\xa9=1")", "a=b", R"("a=b")");
  expectSent(std::string(300, 'x'), '"' + std::string(300, 'x') + '"', "0", R"("0")");
}

TEST_F(CreateNetwork, PassesWordsWithLeadingDashes) {
  expectSent("-Home", R"("-Home")", "-correct-horse", R"("-correct-horse")");
  expectSent("-", R"("-")", "-1", R"("-1")");
  expectSent("--Home", R"("--Home")", "---", R"("---")");
}

TEST_F(CreateNetwork, PassesAValueBehindAnEqualSignWithItsDashesAndFurtherEqualSigns) {
  const ToolRun run = runTool({"createNetwork", "--ssid=--help", "--password=-p=1"});
  EXPECT_EQ(run.output, "Create Network ID: 0\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{kAskLogLevel, kGetClient,
                   R"(CreateNetwork({networkName="--help", ssid="--help", passphrase="-p=1"}))"}));
}

TEST_F(CreateNetwork, FailsWithNothingPrintedByItselfAndNoClientCallWithoutAPassword) {
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home"});
  EXPECT_EQ(run.output,
            "Usage: createNetwork --ssid SSID --password Password:\n"
            "  --ssid arg            network ssid\n"
            "  --password arg        ap password\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(CreateNetwork, LeavesItsLabelInFrontOfTheMessageWhenTheDaemonRefuses) {
  daemon_.Fail("CreateNetwork", WifiException(ErrorCode::AlreadyExists, "SSID Home"));
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run.output, "Create Network ID: Failed to execute command: SSID Home: Already exists\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls,
            (Calls{kAskLogLevel, kGetClient,
                   R"(CreateNetwork({networkName="Home", ssid="Home", passphrase="correct-horse"}))"}));
}

TEST_F(CreateNetwork, PrintsNoLabelWhenNoClientCanBeObtained) {
  daemon_.Fail("WifiClientFactory", DbusError(ErrorCode::BusUnavailable, "No bus"));
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run.output, "No bus: Bus unavailable\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient}));
}

TEST_F(DeleteNetwork, SendsTheIDAndPrintsNothing) {
  const ToolRun run = runTool({"deleteNetwork", "--id", "12"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "DeleteNetwork(12)"}));
}

TEST_F(DeleteNetwork, ReportsABadIDRatherThanAnUnreachableDaemon) {
  daemon_.Fail("WifiClientFactory", DbusError(ErrorCode::BusUnavailable, "No bus"));
  const ToolRun run = runTool({"deleteNetwork", "--id", "Home"});
  EXPECT_EQ(run.output, "the argument ('Home') for option '--id' is invalid\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(RestartNetworks, PassesTrueForForce1) {
  const ToolRun run = runTool({"restartNetworks", "--force", "1"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetToolClient, "RestartNetworks(true)"}));
}

TEST_F(RestartNetworks, PassesFalseForForce0) {
  const ToolRun run = runTool({"restartNetworks", "--force", "0"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetToolClient, "RestartNetworks(false)"}));
}

TEST_F(RestartNetworks, FailsWithoutContactingTheDaemonWhenNoOptionIsGiven) {
  const ToolRun run = runTool({"restartNetworks"});
  EXPECT_EQ(run.output,
            "Usage: restartNetworks --force 0/1:\n"
            "  --force arg           force\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(IsAllNetworkAPDisabled, Prints1Or0AndNeverAWord) {
  for (const bool disabled : {true, false}) {
    SCOPED_TRACE(disabled);
    daemon_.calls.clear();
    daemon_.isAllNetworkAPDisabled = disabled;
    const ToolRun run = runTool({"isAllNetworkAPDisabled"});
    EXPECT_EQ(run.output, disabled ? "1\n" : "0\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "IsAllNetworkAPDisabled()"}));
  }
}

TEST_F(IsAllNetworkAPDisabled, RunsNormallyWithFurtherWordsAndUnknownOptions) {
  const ToolRun run = runTool({"isAllNetworkAPDisabled", "now", "--force", "1"});
  EXPECT_EQ(run.output, "0\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "IsAllNetworkAPDisabled()"}));
}

}  // namespace

}  // namespace TALO::Tool
