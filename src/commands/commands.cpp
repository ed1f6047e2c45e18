#include "commands/commands.h"

namespace TALO::Tool {

// The order of these lines is the order of the help listing.
void fillCommandTable(CommandTable& table) {
  addHelpCommand(table);
  addNetworkCommands(table);
  addRadioCommands(table);
  addStationCommands(table);
  addMeshCommands(table);
  addMACFilterCommands(table);
  addScheduleAndWPSCommands(table);
  addCountryCommands(table);
  addTopologyCommands(table);
  addLogLevelCommands(table);
  addRadioConversionCommands(table);
}

}  // namespace TALO::Tool
