#include "cli/text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

namespace {

TEST(EqualsIgnoreCase, IsTrueForTheSameCharactersInAnyLetterCase) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"", ""},
      {"help", "help"},
      {"help", "HELP"},
      {"HELP", "help"},
      {"getNetworks", "GETNETWORKS"},
      {"getNetworks", "getnetworks"},
      {"gEtNeTwOrKs", "GeTnEtWoRkS"},
      {"triggerWPS_PBC", "TRIGGERwps_pbc"},
      {"az", "AZ"},
      {"0-9 _.", "0-9 _."},
      {"\x80\xC3\xA9\xFF", "\x80\xC3\xA9\xFF"},
      {std::string("a\0b", 3), std::string("A\0B", 3)},
  };
  for (const auto& [a, b] : pairs) {
    SCOPED_TRACE(a + "|" + b);
    EXPECT_TRUE(equalsIgnoreCase(a, b));
    EXPECT_TRUE(equalsIgnoreCase(b, a));
  }
}

TEST(EqualsIgnoreCase, IsFalseForDifferentLengths) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"", "a"},         {"", std::string(1, '\0')},   {"help", "helps"}, {"getNetwork", "getNetworks"},
      {"help", "help "}, {"a", std::string("a\0", 2)},
  };
  for (const auto& [a, b] : pairs) {
    SCOPED_TRACE(a + "|" + b);
    EXPECT_FALSE(equalsIgnoreCase(a, b));
    EXPECT_FALSE(equalsIgnoreCase(b, a));
  }
}

TEST(EqualsIgnoreCase, IsFalseForDifferentCharacters) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"a", "b"},
      {"Xelp", "help"},
      {"helX", "help"},
      {"heXp", "help"},
      // They differ as a letter's two cases do, but are none.
      {"@", "`"},
      {"[", "{"},
      {"]", "}"},
      {"^", "~"},
      {"0", "P"},
      {"\x10", "0"},
      {"_", "\x7F"},
      // A letter beyond ASCII has no other case.
      {"\xC3\xA9", "\xC3\x89"},
      {"\xE9", "\xC9"},
      {std::string("a\0b", 3), std::string("a\0c", 3)},
  };
  for (const auto& [a, b] : pairs) {
    SCOPED_TRACE(a + "|" + b);
    EXPECT_FALSE(equalsIgnoreCase(a, b));
    EXPECT_FALSE(equalsIgnoreCase(b, a));
  }
}

}  // namespace

}  // namespace TALO::Tool
