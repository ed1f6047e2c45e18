#pragma once

#include "cli/command_table.h"

/// One function a command group; each appends its rows in their order.
namespace TALO::Tool {

void addNetworkCommands(CommandTable& table);
void addRadioCommands(CommandTable& table);
void addStationCommands(CommandTable& table);
void addMeshCommands(CommandTable& table);
void addMACFilterCommands(CommandTable& table);
void addScheduleAndWPSCommands(CommandTable& table);
void addCountryCommands(CommandTable& table);
void addTopologyCommands(CommandTable& table);
void addLogLevelCommands(CommandTable& table);
void addRadioConversionCommands(CommandTable& table);

/// Fills an empty table with all 59 rows, `help` first. The `help` row lists this very table: it must stay
/// where it is as long as its rows are called.
void fillCommandTable(CommandTable& table);

}  // namespace TALO::Tool
