// One version everywhere.

#include "support/files.h"

#include <gtest/gtest.h>

#include <regex>

namespace TALO {

namespace {

/// What the expression's group finds first in a file of the tree.
std::string FirstIn(const char* file, const char* expression) {
  const std::string text = ReadFile(std::string(TALOWIFI_SOURCE_DIR) + "/" + file);
  std::smatch found;
  EXPECT_TRUE(std::regex_search(text, found, std::regex(expression))) << file;
  return found.empty() ? "" : found[1].str();
}

TEST(Version, IsTheSameInTheChangelogsAndInTheBuild) {
  EXPECT_EQ(FirstIn("CHANGELOG.md", "## ([0-9.]+)"), TALOWIFI_VERSION);
  EXPECT_EQ(FirstIn("debian/changelog", "^talowifi \\(([0-9.]+)\\)"), TALOWIFI_VERSION);
}

}  // namespace

}  // namespace TALO
