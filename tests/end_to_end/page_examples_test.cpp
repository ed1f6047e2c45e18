// The examples of the tool's manual page, run as they stand there, on the router that the page names.

#include "reference/page_source.h"
#include "support/deadline.h"
#include "support/end_to_end_test.h"
#include "support/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <sstream>

namespace TALO::EndToEnd {

namespace {

using Lines = std::vector<std::string>;

struct Example {
  std::string command;  ///< as typed
  Lines output;         ///< "..." stands for any lines
};

/// The lines without blanks at their ends, and without empty ones at the end: pages do not keep these.
Lines LinesOf(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
  }
  while (!lines.empty() && lines.back().empty()) {
    lines.pop_back();
  }
  return lines;
}

std::vector<Example> ReadExamples() {
  std::vector<Example> examples;
  for (const auto& piece : Reference::ReadPieces(ReadFile(TALOWIFI_TOOL_PAGE))) {
    if (piece.word != "example") {
      continue;
    }
    for (const std::string& line : LinesOf(piece.text)) {
      if (line.starts_with("$ ")) {
        examples.push_back({line.substr(2), {}});
      } else if (examples.back().output.empty() && examples.back().command.ends_with("\\")) {
        examples.back().command += "\n" + line;
      } else {
        examples.back().output.push_back(line);
      }
    }
  }
  return examples;
}

/// Whether `lines` are those of the example.
bool Fits(std::span<const std::string> expected, std::span<const std::string> lines) {
  if (expected.empty()) {
    return lines.empty();
  }
  if (expected.front() == "...") {
    return Fits(expected.subspan(1), lines) || (!lines.empty() && Fits(expected, lines.subspan(1)));
  }
  return !lines.empty() && lines.front() == expected.front() && Fits(expected.subspan(1), lines.subspan(1));
}

bool Matches(const Lines& expected, const std::string& output) { return Fits(expected, LinesOf(output)); }

/// Whether asking again does no harm.
bool IsQuestion(const std::string& command) {
  return command.starts_with("talowifitool get") || command.starts_with("talowifitool is");
}

bool IsFailure(const Lines& output) {
  return std::ranges::any_of(output, [](const std::string& line) {
    return line.find("Failed to execute command: ") != std::string::npos ||
           line.ends_with(" is supported only on debug mode.");
  });
}

class PageExamples : public EndToEndTest {
 protected:
  /// Runs the line in a shell that finds the tool on its path.
  ToolRun RunLine(const std::string& line) {
    ProcessSetup setup = ToolProcess(Address(), {});
    const std::filesystem::path tool = setup.words.front();
    setup.environment["PATH"] = tool.parent_path().string() + ":" + std::getenv("PATH");
    setup.words = {"sh", "-c", line};
    Process process(setup);
    return Finish(process);
  }

  void ExpectExample(const Example& example) {
    const Deadline deadline;
    ToolRun run = RunLine(example.command);
    // Devices come and stations join in their own time.
    while (IsQuestion(example.command) && !Matches(example.output, run.output) && !deadline.HasPassed()) {
      run = RunLine(example.command);
    }
    EXPECT_TRUE(Matches(example.output, run.output))
        << example.command << "\nprints " << testing::PrintToString(run) << "\ninstead of "
        << testing::PrintToString(example.output);
    EXPECT_EQ(run.status, IsFailure(example.output) ? 1 : 0) << example.command;
  }
};

TEST_F(PageExamples, PrintWhatThePageSays) {
  StartDaemon({.options = {"--log-level", "Debug", "--model", "Alder100", "--scenario", TALOWIFI_SCENARIO}});
  CreateNetwork("Home", 1);
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Upper", "--password", "mesh-backhaul"});
  const auto examples = ReadExamples();
  ASSERT_GE(examples.size(), 59U);
  for (const Example& example : examples) {
    ExpectExample(example);
    // The next ones build on it.
    ASSERT_FALSE(HasFailure());
  }
}

TEST(AnExample, FitsWhatItLeavesNothingOutOf) {
  EXPECT_TRUE(Matches({}, ""));
  EXPECT_TRUE(Matches({"a", "b"}, "a\nb\n"));
  EXPECT_FALSE(Matches({}, "a\n"));
  EXPECT_FALSE(Matches({"a"}, ""));
  EXPECT_FALSE(Matches({"a"}, "a\nb\n"));
  EXPECT_FALSE(Matches({"b"}, "a\nb\n"));
}

TEST(AnExample, FitsAnyLinesWhereItHasDots) {
  EXPECT_TRUE(Matches({"..."}, ""));
  EXPECT_TRUE(Matches({"a", "..."}, "a\nb\n"));
  EXPECT_TRUE(Matches({"...", "b"}, "a\nb\n"));
  EXPECT_TRUE(Matches({"a", "...", "c", "...", "d"}, "a\nb\nc\nd\n"));
  EXPECT_FALSE(Matches({"a", "..."}, "b\na\n"));
  EXPECT_FALSE(Matches({"...", "a"}, "a\nb\n"));
  EXPECT_FALSE(Matches({"a", "...", "a"}, "a\n"));
  EXPECT_FALSE(Matches({"a", "...", "d", "...", "c", "...", "e"}, "a\nb\nc\nd\ne\n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
