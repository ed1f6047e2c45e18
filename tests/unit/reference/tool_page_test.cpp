// The tool's page from a source of a few lines and a table of two commands.

#include "reference/tool_page.h"

#include "support/source_failure.h"

#include <gtest/gtest.h>

namespace TALO::Reference {

namespace {

using Kind = OptionReference::Kind;

const std::vector<CommandReference> kCommands = {
    {"list", false},
    {"join",
     true,
     {{"id", Kind::Integer},
      {"radio", Kind::Text, false, false, {"Low", "High"}},
      {"models", Kind::Text, true, true, {"A", "B"}},
      {"force", Kind::Boolean}}},
};

constexpr const char* kSource =
    ".TH TOOL 1\n"
    "@command list Lists all.\n"
    "@prints\nthem.\n"
    "@example\n$ tool list --now\n.one\n"
    "@command join Joins one's net.\n"
    "More of it.\n"
    "@option id the net\n"
    "@option radio the radio\n.B Low\nis slow.\n"
    "@option models the models\n"
    "@option force whether it must\n"
    "@prints\nnothing.\n"
    "@refused\nat night.\n"
    "@example\n$ tool join\n"
    "@end\n.SH FILES\n";

TEST(ToolPage, HoldsTableAndProse) {
  EXPECT_EQ(ToolPage(ReadToolProse(kSource, kCommands)),
            ".TH TOOL 1\n"
            ".SS \"list\"\n"
            "\\fBtalowifitool list\\fR\n"
            ".PP\n"
            "Lists all.\n"
            ".TP\n\\fIPrints\\fR\nthem.\n"
            ".PP\n.RS 4\n.EX\n$ \\fBtool list \\-\\-now\\fR\n\\&.one\n.EE\n.RE\n"
            ".SS \"join\"\n"
            "\\fBtalowifitool join\\fR \\fB\\-\\-id\\fR \\fIid\\fR \\fB\\-\\-radio\\fR \\fIradio\\fR "
            "[\\fB\\-\\-models\\fR \\fImodels\\fR ...] \\fB\\-\\-force\\fR \\fB0\\fR|\\fB1\\fR\n"
            ".PP\n"
            "Joins one\\(aqs net.\n"
            "More of it.\n"
            "Runs only while the daemon logs at debug level.\n"
            ".TP\n\\fB\\-\\-id\\fR \\fIid\\fR\nThe net.\nA whole number.\n"
            ".TP\n\\fB\\-\\-radio\\fR \\fIradio\\fR\nThe radio.\nOne of \\fBLow\\fR, \\fBHigh\\fR.\n"
            ".B Low\nis slow.\n"
            ".TP\n\\fB\\-\\-models\\fR \\fImodels\\fR ...\nThe models.\n"
            "Any of \\fBA\\fR, \\fBB\\fR.\nMay be left out.\n"
            ".TP\n\\fB\\-\\-force\\fR \\fB0\\fR|\\fB1\\fR\nWhether it must.\n"
            ".TP\n\\fIPrints\\fR\nnothing.\n"
            ".TP\n\\fIRefused\\fR\nat night.\n"
            ".PP\n.RS 4\n.EX\n$ \\fBtool join\\fR\n.EE\n.RE\n"
            ".SH FILES\n");
}

/// Why a source that differs from the good one in one place is refused.
std::string FailureWith(const std::string& part, const std::string& instead) {
  std::string source = kSource;
  source.replace(source.find(part), part.size(), instead);
  return SourceFailureOf([&] { ReadToolProse(source, kCommands); });
}

TEST(ToolProse, IsRefusedForACommandWithoutProse) {
  EXPECT_EQ(FailureWith("@command list Lists all.\n@prints\nthem.\n@example\n$ tool list --now\n.one\n", ""),
            "line 2: list, a command, comes here, not join");
  const std::string source = "@command list Lists all.\n@prints\nthem.\n@example\n$ tool list\n@end\n";
  EXPECT_EQ(SourceFailureOf([&] { ReadToolProse(source, kCommands); }),
            "line 6: join, a command, is missing");
}

TEST(ToolProse, IsRefusedForACommandThatDoesNotExist) {
  EXPECT_EQ(FailureWith("@command join", "@command jump"), "line 8: join, a command, comes here, not jump");
  EXPECT_EQ(FailureWith("@end", "@command leave Leaves.\n@end"),
            "line 22: leave is not a command that comes here");
}

TEST(ToolProse, IsRefusedForAnOptionWithoutProse) {
  EXPECT_EQ(FailureWith("@option force whether it must\n", ""),
            "line 15: force, an option of join, is missing");
  EXPECT_EQ(FailureWith("@option id the net\n", ""), "line 10: id, an option of join, comes here, not radio");
}

TEST(ToolProse, IsRefusedForAnOptionThatDoesNotExist) {
  EXPECT_EQ(FailureWith("@prints\nnothing", "@option late whether later\n@prints\nnothing"),
            "line 16: late is not an option of join that comes here");
  EXPECT_EQ(FailureWith("@prints\nthem", "@option late whether later\n@prints\nthem"),
            "line 3: late is not an option of list that comes here");
}

TEST(ToolProse, IsRefusedWhereACommandSaysTooLittle) {
  EXPECT_EQ(FailureWith("Lists all.", ""), "line 2: @command list says nothing");
  EXPECT_EQ(FailureWith("@prints\nthem.\n", ""), "line 3: @prints is missing");
  EXPECT_EQ(FailureWith("@prints\nthem.\n", "@prints\n"),
            "line 3: @prints stands alone, with its text below");
  EXPECT_EQ(FailureWith("@example\n$ tool join\n", ""), "line 20: @example is missing");
  EXPECT_EQ(FailureWith("@end\n.SH FILES\n", ""), "line 20: @end is missing");
  EXPECT_EQ(FailureWith(".SH FILES\n", "@example\nmore\n"), "line 23: @end is the last");
}

}  // namespace

}  // namespace TALO::Reference
