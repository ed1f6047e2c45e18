// What every command says when it is not let through to the daemon, or is given nothing to work with.

#include "support/command_cases.h"
#include "support/command_rows.h"
#include "support/end_to_end_test.h"

#include <filesystem>

namespace TALO::EndToEnd {

namespace {

using Tool::CommandCase;
using Tool::commandCases;

class EveryCommand : public EndToEndTest {};

TEST_F(EveryCommand, SaysThatTheDaemonIsAway) {
  const std::string away =
      "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n";
  for (const CommandCase& command : commandCases()) {
    SCOPED_TRACE(command.word);
    EXPECT_EQ(RunTool(command.typicalWords()),
              Failure(command.debugOnly ? away + Tool::helpListing(false) : away));
  }
  EXPECT_EQ(RunTool({"help"}), Success(Tool::helpListing(false)));
}

// The log level may still be asked for.
TEST_F(EveryCommand, SaysThatItsOperationIsDenied) {
  std::string policy;
  for (const char* name : {"General", "Mesh", "Topology", "Tool"}) {
    policy += "<deny send_destination=\"com.talo.Wifi1\" send_interface=\"com.talo.Wifi1." +
              std::string(name) + "\"/>";
  }
  StartBus({.policy = policy});
  StartDaemon();
  for (const CommandCase& command : commandCases()) {
    SCOPED_TRACE(command.word);
    const std::string& call = command.operations.at(0);
    EXPECT_EQ(RunTool(command.typicalWords()),
              Failure(command.label + "the bus does not let this user talk to the wifi daemon (" +
                      call.substr(0, call.find('(')) + "): Access denied\n"));
  }
  EXPECT_FALSE(std::filesystem::exists(StateFile()));
}

TEST_F(EveryCommand, OfTheDebugOnlyOnesRunsAtDebugLevelAndIsRefusedAtAnyOther) {
  StartDaemon({.options = {"--log-level", "Information"}});
  const auto debugOnly =
      Tool::commandCasesWhere([](const CommandCase& command) { return command.debugOnly; });
  for (const CommandCase& command : debugOnly) {
    EXPECT_EQ(RunTool(command.typicalWords()), Failure(command.word + " is supported only on debug mode.\n"));
  }
  EXPECT_FALSE(std::filesystem::exists(StateFile()));
  Do({"modifyLogLevel", "--level", "Debug"});
  for (const CommandCase& command : debugOnly) {
    EXPECT_EQ(RunTool(command.typicalWords()).output.find("is supported only on debug mode"),
              std::string::npos)
        << command.word;
  }
  EXPECT_TRUE(std::filesystem::exists(StateFile()));
}

TEST_F(EveryCommand, ThatTakesOptionsSaysHowItIsUsedWithoutThem) {
  StartDaemon();
  int withOptions = 0;
  for (const CommandCase& command : commandCases()) {
    if (!command.options.empty()) {
      ++withOptions;
      EXPECT_EQ(RunTool({command.word}), Failure(command.usage + "\n"));
    }
  }
  EXPECT_EQ(withOptions, 26);
  EXPECT_FALSE(std::filesystem::exists(StateFile()));
}

}  // namespace

}  // namespace TALO::EndToEnd
