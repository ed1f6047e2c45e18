// What the daemon asks of the kernel's wifi, in a suite of its own.

#include "hwsim/support/programs.h"
#include "hwsim/support/scenario.h"

namespace TALO::Hwsim {

namespace {

class RealKernel : public Scenario {};

TEST_F(RealKernel, AnswersAndDoesWhatTheDaemonAsksOfIt) {
  const std::string output = OutputOf({"real_kernel_test", "--gtest_color=no"});
  // What is skipped elsewhere is not skipped here.
  EXPECT_NE(output.find("[  PASSED  ]"), std::string::npos) << output;
  EXPECT_EQ(output.find("[  SKIPPED ]"), std::string::npos) << output;
}

}  // namespace

}  // namespace TALO::Hwsim
