#include "bus/log_level.h"

#include "bus/connection.h"

namespace TALO::Wifi::Bus {

std::string QueryLogLevel() {
  return Connection::Shared()->GetTextProperty(kLogControlPath, kLogControlInterface, kLogLevelProperty);
}

}  // namespace TALO::Wifi::Bus
