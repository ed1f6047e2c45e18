// The examples of the tool's manual page, run as they stand there, on the router that the page names.

#include "reference/page_source.h"
#include "support/deadline.h"
#include "support/end_to_end_test.h"
#include "support/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
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
bool Fits(const Lines& expected, const Lines& lines) {
  auto at = lines.begin();
  bool anyMay = false;
  for (auto start = expected.begin(); start != expected.end();) {
    const auto end = std::find(start, expected.end(), "...");
    const auto found = std::search(at, lines.end(), start, end);
    const bool stands = end == expected.end() && anyMay
                            ? std::distance(start, end) <= std::distance(at, lines.end()) &&
                                  std::equal(start, end, lines.end() - std::distance(start, end))
                            : found != lines.end() || start == end;
    if (!stands || (!anyMay && found != at)) {
      return false;
    }
    at = end == expected.end() ? lines.end() : found + std::distance(start, end);
    anyMay = end != expected.end();
    start = anyMay ? end + 1 : end;
  }
  return anyMay || at == lines.end();
}

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
    while (IsQuestion(example.command) && !Fits(example.output, LinesOf(run.output)) &&
           !deadline.HasPassed()) {
      run = RunLine(example.command);
    }
    EXPECT_TRUE(Fits(example.output, LinesOf(run.output)))
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
  EXPECT_TRUE(Fits({}, {}));
  EXPECT_TRUE(Fits({"a", "b"}, {"a", "b"}));
  EXPECT_FALSE(Fits({}, {"a"}));
  EXPECT_FALSE(Fits({"a"}, {}));
  EXPECT_FALSE(Fits({"a"}, {"a", "b"}));
  EXPECT_FALSE(Fits({"b"}, {"a", "b"}));
}

TEST(AnExample, FitsAnyLinesWhereItHasDots) {
  EXPECT_TRUE(Fits({"..."}, {}));
  EXPECT_TRUE(Fits({"a", "..."}, {"a", "b"}));
  EXPECT_TRUE(Fits({"...", "b"}, {"a", "b"}));
  EXPECT_TRUE(Fits({"a", "...", "c", "...", "d"}, {"a", "b", "c", "d"}));
  EXPECT_FALSE(Fits({"a", "..."}, {"b", "a"}));
  EXPECT_FALSE(Fits({"...", "a"}, {"a", "b"}));
  EXPECT_FALSE(Fits({"a", "...", "a"}, {"a"}));
  EXPECT_FALSE(Fits({"a", "...", "d", "...", "c", "...", "e"}, {"a", "b", "c", "d", "e"}));
}

}  // namespace

}  // namespace TALO::EndToEnd
