#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client_for_tool.h"
#include "commands/commands.h"
#include "values/enum_names.h"

#include <string>
#include <vector>

namespace TALO::Tool {

using Wifi::WifiClientFactoryForTool;
using Wifi::Util::EnumFromName;
using Wifi::Util::LogLevel;

namespace {

void modifyLogLevel(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: modifyLogLevel --level Error|Warning|Information|Debug");
  options.add_options()("level", enumValue<LogLevel>(), "log level");
  const auto arguments = parseArguments(subargs, options);
  const auto level = EnumFromName<LogLevel>(arguments["level"].as<std::string>());

  WifiClientFactoryForTool::GetInstance()->SetLogLevel(level);
}

}  // namespace

void addLogLevelCommands(CommandTable& table) { addCommand(table, "modifyLogLevel", modifyLogLevel, false); }

}  // namespace TALO::Tool
