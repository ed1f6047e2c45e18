#pragma once

#include "support/end_to_end_test.h"

namespace TALO::EndToEnd {

/// What is built, installed below a directory of the test's own.
class InstalledTree : public EndToEndTest {
 protected:
  void SetUp() override {
    // Not by another prefix: what has an absolute path must stay off this machine too.
    Run({"cmake", "--install", TALOWIFI_BUILD_DIR}, {{"DESTDIR", Path("installed")}});
    ASSERT_FALSE(HasFailure());
  }

  std::string Prefix() const { return Path("installed") + TALOWIFI_PREFIX; }

  /// Runs a program to its end, expects it to succeed, and returns what it printed.
  static std::string Run(const Words& words, const Environment& environment = {}) {
    Process process({.words = words, .environment = environment});
    const ToolRun run = Finish(process);
    EXPECT_EQ(run.status, 0) << words.at(0) << ":\n" << run.output << run.errors;
    return run.output;
  }
};

}  // namespace TALO::EndToEnd
