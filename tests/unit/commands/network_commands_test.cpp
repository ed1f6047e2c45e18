#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

namespace {

class CreateNetwork : public testing::Test {
 protected:
  CreateNetwork() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(CreateNetwork, SendsTheSSIDAsNameToo) {
  daemon_.newNetworkId = 7;
  const ToolRun run = runTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run.output, "Create Network ID: 7\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()",
                   R"(CreateNetwork({networkName="Home", ssid="Home", passphrase="correct-horse"}))"}));
}

}  // namespace

}  // namespace TALO::Tool
