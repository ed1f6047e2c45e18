#pragma once

#include "support/command_cases.h"

/// The groups that commandCases() is made of.
namespace TALO::Tool {

std::vector<CommandCase> networkCases();
std::vector<CommandCase> radioCases();
std::vector<CommandCase> stationCases();
std::vector<CommandCase> meshCases();
std::vector<CommandCase> macFilterCases();
std::vector<CommandCase> scheduleAndWPSCases();
std::vector<CommandCase> countryCases();
std::vector<CommandCase> topologyAndLogLevelCases();

constexpr const char* kForMesh = "WifiClientFactoryForMesh";
constexpr const char* kForTopo = "WifiClientFactoryForTopo";
constexpr const char* kForTool = "WifiClientFactoryForTool";

inline OptionCase text(const char* name, const char* value) { return {name, OptionKind::Text, {value}}; }
inline OptionCase boolean(const char* name) { return {name, OptionKind::Boolean, {"1"}}; }
inline OptionCase integer(const char* name) { return {name, OptionKind::Integer, {"4711"}}; }

}  // namespace TALO::Tool
