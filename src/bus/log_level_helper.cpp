#include "client/log_level_helper.h"

#include "bus/log_level.h"
#include "bus/names.h"

namespace TALO::Wifi::Daemon {

bool LogLevelHelper::IsDebugLogLevel() { return Bus::QueryLogLevel() == Bus::kDebugLevel; }

}  // namespace TALO::Wifi::Daemon
