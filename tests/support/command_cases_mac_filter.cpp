#include "support/command_case_groups.h"

namespace TALO::Tool {

namespace {

OptionCase devices() {
  return {.name = "--devices",
          .kind = OptionKind::List,
          .values = {"laptop", "02:00:00:00:00:0a"},
          .valueOptional = true};
}

}  // namespace

std::vector<CommandCase> macFilterCases() {
  return {
      {.word = "getMACFilterGlobal",
       .usage = "Usage: getMACFilterGlobal:\n",
       .operations = {"GetMACFilterGlobal()"},
       .output = "{\n\t\"devices\" : [],\n\t\"enablePreventBroadcast\" : false,\n"
                 "\t\"maximumBroadcast\" : 0\n}\n\n"},
      {.word = "getMACFilterProfiles",
       .usage = "Usage: getMACFilterGlobal:\n",
       .operations = {"GetMACFilterProfiles()"},
       .output = "[]\n\n"},
      // The longest option moves the column of the descriptions.
      {.word = "setMACFilterGlobal",
       .usage = "Usage: SetMACFilterGlobal --enablePreventBroadcast 0/1 --maximumBroadcast 100 "
                "--devices DeviceName MACAddress:\n"
                "  --enablePreventBroadcast arg enablePreventBroadcast\n"
                "  --maximumBroadcast arg       maximumBroadcast\n"
                "  --devices arg                devices\n",
       .options = {boolean("--enablePreventBroadcast"), integer("--maximumBroadcast"), devices()},
       .operations = {R"(SetMACFilterGlobal({devices=[{name="laptop", address=02:00:00:00:00:0a}], )"
                      R"(enablePreventBroadcast=true, maximumBroadcast=4711}))"}},
      {.word = "createMACFilterProfile",
       .usage = "Usage: createMACFilterProfile --name name --action Deny|Allow --devices DeviceName "
                "MACAddress --applyToAll 0/1:\n"
                "  --name arg            name\n"
                "  --action arg          action\n"
                "  --devices arg         devices\n"
                "  --applyToAll arg      applyToAll\n",
       .options = {text("--name", "guests"), text("--action", "Deny"), devices(), boolean("--applyToAll")},
       .operations = {R"(CreateMACFilterProfile({id=-1, name="guests", action=Deny, )"
                      R"(devices=[{name="laptop", address=02:00:00:00:00:0a}]}, true))"},
       .output = "ID: 0\n"},
      {.word = "modifyMACFilterProfile",
       .usage = "Usage: modifyMACFilterProfile --id id --name name --action Deny|Allow "
                "--devices DeviceName MACAddress:\n"
                "  --id arg              id\n"
                "  --name arg            name\n"
                "  --action arg          action\n"
                "  --devices arg         devices\n",
       .options = {integer("--id"), text("--name", "guests"), text("--action", "Deny"), devices()},
       .operations = {R"(ModifyMACFilterProfile({id=4711, name="guests", action=Deny, )"
                      R"(devices=[{name="laptop", address=02:00:00:00:00:0a}]}))"}},
      {.word = "deleteMACFilterProfile",
       .usage = "Usage: deleteMACFilterProfile --id id:\n"
                "  --id arg              id\n",
       .options = {integer("--id")},
       .operations = {"DeleteMACFilterProfiles([4711])"}},
  };
}

}  // namespace TALO::Tool
