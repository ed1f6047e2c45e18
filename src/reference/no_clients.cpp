// The doors of the library, shut: the commands are asked how they are used, never to do anything.

#include "client/log_level_helper.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_mesh.h"
#include "client/wifi_client_for_tool.h"
#include "client/wifi_client_for_topo.h"

#include <stdexcept>

namespace TALO::Wifi {

namespace {

[[noreturn]] void Refuse() { throw std::logic_error("there is no daemon to ask"); }

}  // namespace

std::shared_ptr<WifiClient> WifiClientFactory::GetInstance() { Refuse(); }
std::shared_ptr<WifiClientForMesh> WifiClientFactoryForMesh::GetInstance() { Refuse(); }
std::shared_ptr<WifiClientForTopo> WifiClientFactoryForTopo::GetInstance() { Refuse(); }
std::shared_ptr<WifiClientForTool> WifiClientFactoryForTool::GetInstance() { Refuse(); }

bool Daemon::LogLevelHelper::IsDebugLogLevel() { Refuse(); }

}  // namespace TALO::Wifi
