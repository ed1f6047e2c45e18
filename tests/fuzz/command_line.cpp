// Any command line, whatever the daemon answers. The words are lines; what follows the first zero byte makes
// the daemon's answers.

#include "fuzz/support/fuzzed_values.h"
#include "fuzz/support/require.h"
#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <json/reader.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

using Wifi::FakeDaemon;

void FillAnswers(FakeDaemon& daemon, FuzzedDataProvider& data) {
  FuzzedValues values(data);
  values.Fill(daemon.isDebugLogLevel);
  const auto fill = [&values](auto&... answers) { (values.Fill(answers), ...); };
  fill(daemon.networkInterfaces, daemon.networkSettings, daemon.newNetworkId, daemon.scheduleStatus,
       daemon.isAllNetworkAPDisabled, daemon.radioStatuses, daemon.radioStatusesSimple,
       daemon.radioIfStatuses, daemon.radioSettings, daemon.networkInterfaceRadioMap,
       daemon.radioConversionInfo, daemon.macFilterProfiles, daemon.newMACFilterProfileId,
       daemon.macFilterGlobal, daemon.scanResults, daemon.stationSettings, daemon.stationStatuses,
       daemon.stationInterfaces, daemon.devices, daemon.defaultWPSTarget, daemon.isWPS_PBCAvailable,
       daemon.listCountryCode, daemon.countryCode, daemon.networkSetting);
  fill(daemon.backhaulSetting, daemon.backhaulInterfaces, daemon.backhaulSTASetting,
       daemon.backhaulSTAInterfaces, daemon.backhaulSTAStatuses, daemon.isBackhaulBandSwapped,
       daemon.remoteCountryCodeCapability, daemon.isWifiAdjustNeeded, daemon.context, daemon.idsForTopo,
       daemon.activatedIdsForTopo, daemon.interfacesForTopo);
}

struct Run {
  Tool::ToolRun tool;
  std::vector<std::string> calls;
};

Run RunOnce(const std::vector<std::string>& words, const std::string& answers) {
  FakeDaemon::Reset();
  FakeDaemon& daemon = FakeDaemon::Get();
  if (!answers.empty()) {
    FuzzedDataProvider data(reinterpret_cast<const std::uint8_t*>(answers.data()), answers.size());
    FillAnswers(daemon, data);
  }
  Run run;
  run.tool = Tool::runTool(words);
  run.calls = daemon.calls;
  return run;
}

bool IsOperation(const std::string& call) {
  return call.find("::GetInstance()") == std::string::npos && call != "IsDebugLogLevel()";
}

bool IsChange(const std::string& call) {
  const auto begins = [&call](const char* word) { return call.starts_with(word); };
  return IsOperation(call) && !begins("Get") && !begins("Is") && !begins("List");
}

void CheckRun(const Run& run, bool answersArePlain) {
  Require(run.tool.status == 0 || run.tool.status == 1, "the status is 0 or 1");
  Require(run.tool.status == 0 || !run.tool.output.empty(), "who fails says why");
  const auto operations = std::ranges::count_if(run.calls, IsOperation);
  const auto changes = std::ranges::count_if(run.calls, IsChange);
  Require(changes <= 1 && operations <= 2, "a command changes one thing, and asks once before");
  const std::string& output = run.tool.output;
  const bool isHelp = output.starts_with("Usage: talowifitool [option] command args");
  if (answersArePlain) {
    Require((run.tool.status == 0 && !isHelp) == (operations > 0),
            "what is asked for works, and nothing else is");
  }
  if (run.tool.status == 0 && (output.starts_with('[') || output.starts_with('{'))) {
    Json::Value json;
    std::string errors;
    std::istringstream text(output);
    Json::CharReaderBuilder strict;
    Json::CharReaderBuilder::strictMode(&strict.settings_);
    Require(Json::parseFromStream(strict, text, &json, &errors), "a listing is JSON");
  }
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\0'), input.size());
  const std::vector<std::string> words = Fuzz::Lines(input.substr(0, end));
  const std::string answers = end < input.size() ? input.substr(end + 1) : "";
  const Fuzz::Run run = Fuzz::RunOnce(words, answers);
  Fuzz::CheckRun(run, answers.empty());
  const Fuzz::Run again = Fuzz::RunOnce(words, answers);
  Fuzz::Require(again.tool.status == run.tool.status && again.tool.output == run.tool.output &&
                    again.calls == run.calls,
                "it does the same again");
  return 0;
}
