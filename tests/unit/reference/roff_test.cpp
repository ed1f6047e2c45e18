#include "reference/roff.h"

#include <gtest/gtest.h>

namespace TALO::Reference {

namespace {

TEST(Escape, KeepsWhatRoffReadsAsItStands) {
  EXPECT_EQ(Escape("Home, 5 GHz (both)"), "Home, 5 GHz (both)");
  EXPECT_EQ(Escape(""), "");
}

TEST(Escape, GuardsWhatRoffWouldReadAsSomethingElse) {
  EXPECT_EQ(Escape("a\\nb"), "a\\enb");
  EXPECT_EQ(Escape("--ssid -1"), "\\-\\-ssid \\-1");
  EXPECT_EQ(Escape("'a' `b` ^ ~ \"c\""), "\\(aqa\\(aq \\(gab\\(ga \\(ha \\(ti \\(dqc\\(dq");
}

TEST(Escape, GuardsADotThatBeginsALine) {
  EXPECT_EQ(Escape("..."), "\\&...");
  EXPECT_EQ(Escape("a.b"), "a.b");
}

TEST(Fonts, EndWhereTheirTextEnds) {
  EXPECT_EQ(Bold("--id"), "\\fB\\-\\-id\\fR");
  EXPECT_EQ(Italic("id"), "\\fIid\\fR");
}

TEST(Sentence, HasACapitalAndAFullStop) {
  EXPECT_EQ(Sentence("the network"), "The network.");
  EXPECT_EQ(Sentence("Done."), "Done.");
  EXPECT_EQ(Sentence("-1 is none"), "\\-1 is none.");
  EXPECT_EQ(Sentence("(id, radio)"), "(id, radio).");
}

TEST(Macro, QuotesItsArgument) { EXPECT_EQ(Macro("SS", "get a"), ".SS \"get a\"\n"); }

}  // namespace

}  // namespace TALO::Reference
