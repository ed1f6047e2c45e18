#pragma once

#include "support/fake_daemon.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <vector>

namespace TALO::Tool {

using Calls = std::vector<std::string>;

// Calls that most commands make before their own.
constexpr const char* kAskLogLevel = "IsDebugLogLevel()";
constexpr const char* kGetClient = "WifiClientFactory::GetInstance()";
constexpr const char* kGetMeshClient = "WifiClientFactoryForMesh::GetInstance()";
constexpr const char* kGetTopoClient = "WifiClientFactoryForTopo::GetInstance()";
constexpr const char* kGetToolClient = "WifiClientFactoryForTool::GetInstance()";

/// Runs against a daemon that is new in every test and logs at debug level.
class CommandTest : public testing::Test {
 protected:
  CommandTest() { Wifi::FakeDaemon::Reset(); }

  Wifi::FakeDaemon& daemon_ = Wifi::FakeDaemon::Get();
};

/// A failure of the client, and what a command prints of it.
struct ClientFailure {
  const char* name;
  std::exception_ptr exception;
  std::string output;
};

/// One of each kind that a client or its factory may raise.
const std::vector<ClientFailure>& clientFailures();

}  // namespace TALO::Tool
