#include "support/command_case_groups.h"

namespace TALO::Tool {

std::vector<CommandCase> networkCases() {
  return {
      {.word = "getNetworks",
       .debugOnly = false,
       .usage = "Usage: getNetworks:\n",
       .operations = {"GetNetworkSettings()"},
       .output = "[]\n\n"},
      {.word = "getNetworkInterfaces",
       .usage = "Usage: getNetworkInterfaces:\n",
       .operations = {"GetNetworkInterfaces()"},
       .output = "\n"},
      {.word = "createNetwork",
       .usage = "Usage: createNetwork --ssid SSID --password Password:\n"
                "  --ssid arg            network ssid\n"
                "  --password arg        ap password\n",
       .options = {text("--ssid", "Home"), text("--password", "correct-horse")},
       .operations = {R"(CreateNetwork({networkName="Home", ssid="Home", passphrase="correct-horse"}))"},
       .output = "Create Network ID: 0\n",
       .label = "Create Network ID: "},
      {.word = "deleteNetwork",
       .usage = "Usage: deleteNetwork --id ID:\n"
                "  --id arg              network id\n",
       .options = {integer("--id")},
       .operations = {"DeleteNetwork(4711)"}},
      {.word = "restartNetworks",
       .usage = "Usage: restartNetworks --force 0/1:\n"
                "  --force arg           force\n",
       .options = {boolean("--force")},
       .factory = kForTool,
       .operations = {"RestartNetworks(true)"}},
      {.word = "isAllNetworkAPDisabled",
       .debugOnly = false,
       .usage = "Usage: isAllNetworkAPDisabled:\n",
       .operations = {"IsAllNetworkAPDisabled()"},
       .output = "0\n"},
  };
}

std::vector<CommandCase> radioCases() {
  return {
      {.word = "getRadios",
       .usage = "Usage: getRadioSettings:\n",
       .operations = {"GetRadioSettings()"},
       .output = "[]\n\n"},
      {.word = "getRadioStatuses",
       .usage = "Usage: getRadioStatuses:\n",
       .operations = {"GetRadioStatuses()"},
       .output = "[]\n\n"},
      {.word = "getRadioStatusesSimple",
       .usage = "Usage: getRadioStatusesSimple:\n",
       .operations = {"GetRadioStatusesSimple()"},
       .output = "[]\n\n"},
      {.word = "getRadioIfStatuses",
       .debugOnly = false,
       .usage = "Usage: getRadioIfStatuses:\n",
       .operations = {"GetRadioIfStatuses()"},
       .output = "Frequency           Radio Interface     Enabled Wifi Interfaces\n"},
      {.word = "getInterfaceRadioMap",
       .usage = "Usage: getNetworkInterfaceRadioMap:\n",
       .operations = {"GetNetworkInterfaceRadioMap()"},
       .output = "Wifi Interface      Radio Frequency     \n\n"},
      {.word = "getRadioConversionInfo",
       .debugOnly = false,
       .usage = "Usage: getRadioConversionInfo:\n",
       .operations = {"GetRadioConversionInfo()"},
       .output = "Radio conversion map:\nBackhaul swapped: 0\n"},
  };
}

std::vector<CommandCase> stationCases() {
  return {
      {.word = "getScanResults",
       .usage = "Usage: getScanResults --radio Band2_4GHz|...:\n"
                "  --radio arg           radio\n",
       .options = {text("--radio", "Band5GHz")},
       .operations = {"GetScanResults(Band5GHz)"},
       .output = "[]\n\n"},
      {.word = "getStations",
       .usage = "Usage: getStationSettings:\n",
       .operations = {"GetStationSettings()"},
       .output = "[]\n\n"},
      {.word = "getStationStatuses",
       .usage = "Usage: GetStationStatuses:\n",
       .operations = {"GetStationStatuses()"},
       .output = "[]\n\n"},
      {.word = "getStationInterfaces",
       .usage = "Usage: GetStationInterfaces:\n",
       .operations = {"GetStationInterfaces()"},
       .output = "Interfaces: \n\n"},
      {.word = "modifyStation",
       .usage = "Usage: modifyStation --enable 0|1 --radio Band2_4GHz|... --essid essid --bssid bssid "
                "--user user --password password --securityMode PersonalWPA2|...:\n"
                "  --enable arg          enable\n"
                "  --radio arg           radio\n"
                "  --essid arg           essid\n"
                "  --user arg            user\n"
                "  --password arg        password\n"
                "  --bssid arg           bssid\n"
                "  --securityMode arg    securityMode\n",
       .options = {boolean("--enable"), text("--radio", "Band5GHz"), text("--essid", "Upstream"),
                   text("--user", "guest"), text("--password", "correct-horse"),
                   text("--bssid", "02:00:00:00:00:0a"), text("--securityMode", "PersonalWPA2")},
       .operations = {R"(ModifyStation({enable=true, essid="Upstream", user="guest", )"
                      R"(password="correct-horse", bssid=02:00:00:00:00:0a, securityMode=PersonalWPA2, )"
                      R"(radio=Band5GHz}))"}},
      {.word = "reconnectAllSTA", .usage = "Usage: reconnectAllSTA:\n", .operations = {"ReconnectAllSTA()"}},
  };
}

std::vector<CommandCase> scheduleAndWPSCases() {
  return {
      {.word = "updateSchedule",
       .debugOnly = false,
       .usage = "Usage: updateSchedule --mode Customized|ValidFor:\n"
                "  --mode arg            mode\n",
       .options = {text("--mode", "Customized")},
       .factory = kForTool,
       .operations = {"UpdateSchedule(Customized)"}},
      {.word = "getScheduleStatus",
       .debugOnly = false,
       .usage = "Usage: getScheduleStatus:\n",
       .operations = {"GetScheduleStatus()"}},
      {.word = "rotatePassword",
       .debugOnly = false,
       .usage = "Usage: rotatePassword --id id --radio Band2_4GHz|Band5GHz|...:\n"
                "  --id arg              int\n"
                "  --radio arg           radio\n",
       .options = {integer("--id"), text("--radio", "Band5GHz")},
       .factory = kForTool,
       .operations = {"RotatePassword({id=4711, radio=Band5GHz})"}},
      {.word = "wpsERConfig",
       .debugOnly = false,
       .usage = "Usage: wpsERConfig --ifName name --ssid ssid --key key --mode mode:\n"
                "  --ifName arg          ifName\n"
                "  --ssid arg            ssid\n"
                "  --key arg             key\n"
                "  --mode arg            mode\n",
       .options = {text("--ifName", "wlan0"), text("--ssid", "Home"), text("--key", "correct-horse"),
                   text("--mode", "PersonalWPA2")},
       .factory = kForTool,
       .operations = {R"(WPSERConfig({ifName="wlan0", ssid="Home", key="correct-horse", )"
                      R"(mode="PersonalWPA2"}))"}},
      {.word = "getDevices",
       .debugOnly = false,
       .usage = "Usage: getDevices:\n",
       .operations = {"GetDevices()"},
       .output = "[]\n\n"},
      {.word = "isDefaultWPS_PBCAvalible",
       .debugOnly = false,
       .usage = "Usage: isDefaultWPS_PBCAvalible:\n",
       .operations = {"GetDefaultWPSTarget()", "IsWPS_PBCAvailable({id=0, radio=Error})"},
       .output = "0\n"},
      {.word = "triggerWPSConnected",
       .debugOnly = false,
       .usage = "Usage: triggerWPSConnected --ifName interface:\n"
                "  --ifName arg          ifName\n",
       .options = {text("--ifName", "wlan0")},
       .operations = {R"(TriggerWPSConnected("wlan0"))"}},
      {.word = "triggerDefaultWPS_PBC",
       .debugOnly = false,
       .usage = "Usage: triggerDefaultWPS_PBC:\n",
       .operations = {"GetDefaultWPSTarget()", "TriggerWPS_PBC({id=0, radio=Error})"}},
      {.word = "triggerWPS_PBC",
       .debugOnly = false,
       .usage = "Usage: setWPSWithPBC --id id --radio Band2_4GHz|Band5GHz|...:\n"
                "  --id arg              id\n"
                "  --radio arg           radio\n",
       .options = {integer("--id"), text("--radio", "Band5GHz")},
       .operations = {"TriggerWPS_PBC({id=4711, radio=Band5GHz})"}},
      {.word = "triggerHWButton",
       .debugOnly = false,
       .usage = "Usage: triggerHWButton:\n",
       .operations = {"TriggerHWButton()"}},
  };
}

}  // namespace TALO::Tool
