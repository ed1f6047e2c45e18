#include "support/command_case_groups.h"

namespace TALO::Tool {

std::vector<CommandCase> meshCases() {
  const std::string newBackhaul =
      "{\n\t\"enable\" : false,\n\t\"password\" : \"\",\n\t\"radios\" : [],\n\t\"ssid\" : \"\",\n"
      "\t\"ssidHex\" : \"\"\n}\n\n";
  const std::string backhaulOptions =
      "  --enable arg          enable\n"
      "  --ssid arg            ssid\n"
      "  --password arg        password\n";
  return {
      {.word = "getBackhaul",
       .usage = "Usage: getBackhaul:\n",
       .factory = kForMesh,
       .operations = {"GetBackhaulSetting()"},
       .output = newBackhaul},
      {.word = "getBackhaulInterfaces",
       .usage = "Usage: getBackhaulInterfaces:\n",
       .factory = kForMesh,
       .operations = {"GetBackhaulInterfaces()"},
       .output = "Interfaces: \n\n"},
      {.word = "modifyBackhaul",
       .usage = "Usage: modifyBackhaul --enable 1/0 --ssid ssid --password password:\n" + backhaulOptions,
       .options = {boolean("--enable"), text("--ssid", "Mesh"), text("--password", "correct-horse")},
       .factory = kForMesh,
       .operations = {R"(ModifyBackhaul({enable=true, ssid="Mesh", password="correct-horse"}, false))"}},
      {.word = "getBackhaulSTA",
       .usage = "Usage: getBackhaulSTA:\n",
       .factory = kForMesh,
       .operations = {"GetBackhaulSTASetting()"},
       .output = newBackhaul},
      {.word = "getBackhaulSTAInterfaces",
       .usage = "Usage: getBackhaulSTAInterfaces:\n",
       .factory = kForMesh,
       .operations = {"GetBackhaulSTAInterfaces()"},
       .output = "Interfaces: \n\n"},
      {.word = "getBackhaulSTAStatuses",
       .usage = "Usage: getBackhaulSTAStatuses:\n",
       .factory = kForMesh,
       .operations = {"GetBackhaulSTAStatuses()"},
       .output = "[]\n\n"},
      // The blank in front of the colon is the caption's own.
      {.word = "modifyBackhaulSTA",
       .usage = "Usage: modifyBackhaulSTA --enable 1/0 --ssid ssid --password password :\n" + backhaulOptions,
       .options = {boolean("--enable"), text("--ssid", "Mesh"), text("--password", "correct-horse")},
       .factory = kForMesh,
       .operations = {R"(ModifyBackhaulSTA({enable=true, ssid="Mesh", password="correct-horse"}))"}},
      {.word = "enableScan",
       .usage = "Usage: enableScan --type Disable|Default|BestAP:\n"
                "  --type arg            type\n",
       .options = {text("--type", "BestAP")},
       .factory = kForMesh,
       .operations = {"EnableScan(BestAP)"}},
      {.word = "modifyMeshInfo",
       .usage = "Usage: modifyMeshInfo --models Alder100|Birch200|Cedar300|Dune40 --isRepeater 0/1:\n"
                "  --models arg          models\n"
                "  --isRepeater arg      isRepeater\n",
       .options = {{.name = "--models",
                    .kind = OptionKind::List,
                    .values = {"Birch200", "Cedar300"},
                    .optional = true},
                   boolean("--isRepeater")},
       .factory = kForMesh,
       .operations = {"ModifyMeshInfo({models=[Birch200, Cedar300], isRepeater=true})"}},
      {.word = "swapBackhaulBand",
       .usage = "Usage: swapBackhaulBand --enable 1/0:\n"
                "  --enable arg          enable\n",
       .options = {boolean("--enable")},
       .factory = kForMesh,
       .operations = {"SwapBackhaulBand(true)"}},
      {.word = "isBackhaulBandSwapped",
       .usage = "Usage: isBackhaulBandSwapped:\n",
       .factory = kForMesh,
       .operations = {"IsBackhaulBandSwapped()"},
       .output = "no\n"},
      {.word = "isWifiAdjustNeeded",
       .usage = "Usage: isWifiAdjustNeeded:\n",
       .factory = kForMesh,
       .operations = {"IsWifiAdjustNeeded()"},
       .output = "no\n"},
  };
}

std::vector<CommandCase> countryCases() {
  return {
      {.word = "listCountryCode",
       .usage = "Usage: listCountryCode:\n",
       .operations = {"ListCountryCode()"},
       .output = "Immutable: 0\n"},
      {.word = "getRemoteCountryCodeCapability",
       .usage = "Usage: getRemoteCountryCodeCapability --serial serial "
                "--model [Alder100|Birch200|Cedar300|Dune40]:\n"
                "  --serial arg          serial\n"
                "  --model arg           model\n",
       .options = {text("--serial", "SN-1"), text("--model", "Birch200")},
       .factory = kForMesh,
       .operations = {R"(GetRemoteCountryCodeCapability("SN-1", Birch200))"},
       .output = "Immutable: 0\n"},
      {.word = "setCountryCode",
       .usage = "Usage: setCountryCode --country country:\n"
                "  --country arg         country\n",
       .options = {text("--country", "DE")},
       .operations = {"SetCountryCode(DE)"}},
      {.word = "getCountryCode",
       .usage = "Usage: getCountryCode:\n",
       .operations = {"GetCountryCode()"},
       .output = "AD\n"},
  };
}

std::vector<CommandCase> topologyAndLogLevelCases() {
  return {
      {.word = "getIdsForTopo",
       .usage = "Usage: getIDsForTopo --context context:\n"
                "  --context arg         context\n",
       .options = {text("--context", "Router")},
       .factory = kForTopo,
       .operations = {R"(GetIdsForTopo("Router"))"},
       .output = "IDs: \n"},
      {.word = "getActivateIdsForTopo",
       .usage = "Usage: getActivatedIDsForTopo:\n",
       .factory = kForTopo,
       .operations = {"GetActivatedIdsForTopo()"},
       .output = "IDs: \n"},
      {.word = "getInterfacesForTopo",
       .usage = "Usage: getInterfacesForTopo:\n",
       .factory = kForTopo,
       .operations = {"GetInterfacesForTopo()"},
       .output = "\n"},
      {.word = "setContext",
       .usage = "Usage: setContext --context Context:\n"
                "  --context arg         context\n",
       .options = {text("--context", "Router")},
       .factory = kForTopo,
       .operations = {R"(SetContext("Router"))"}},
      {.word = "getContext",
       .usage = "Usage: getContext:\n",
       .factory = kForTopo,
       .operations = {"GetContext()"},
       .output = "Context: \n",
       .label = "Context: "},
      {.word = "activate",
       .usage = "Usage: activate --id NetworkID --bridge BridgeName:\n"
                "  --id arg              network id\n"
                "  --bridge arg          bridge name\n",
       .options = {integer("--id"), text("--bridge", "br0")},
       .factory = kForTopo,
       .operations = {R"(Activate({id=4711, bridge="br0"}))"}},
      {.word = "deactivate",
       .usage = "Usage: deactivate --id NetworkID:\n"
                "  --id arg              network id\n",
       .options = {integer("--id")},
       .factory = kForTopo,
       .operations = {"Deactivate(4711)"}},
      {.word = "modifyLogLevel",
       .debugOnly = false,
       .usage = "Usage: modifyLogLevel --level Error|Warning|Information|Debug:\n"
                "  --level arg           log level\n",
       .options = {text("--level", "Debug")},
       .factory = kForTool,
       .operations = {"SetLogLevel(Debug)"}},
  };
}

}  // namespace TALO::Tool
