// The README's tour shows what ./run prints.

#include "support/files.h"
#include "support/network_json.h"
#include "support/story_test.h"

#include <filesystem>
#include <sstream>

namespace TALO::EndToEnd {

namespace {

struct Step {
  std::string line;    ///< behind the prompt
  std::string output;  ///< what stands below it
};

/// The steps of the ```console blocks of a text.
std::vector<Step> ReadSteps(const std::string& text) {
  const std::string prompt = "$ ";
  std::vector<Step> steps;
  std::istringstream lines(text);
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (!inside || line == "```") {
      inside = line == "```console";
    } else if (line.starts_with(prompt)) {
      steps.push_back({line.substr(prompt.size()), ""});
    } else {
      steps.at(steps.size() - 1).output += line + "\n";
    }
  }
  return steps;
}

class ReadmeTour : public StoryTest {
 protected:
  /// As ./run starts it; `run` stands for that script.
  ReadmeTour() {
    const std::string sources = TALOWIFI_SOURCE_DIR;
    StartDaemon({.options = {"--log-level", "Debug", "--scenario", sources + "/scenarios/home-router.json"}});
    std::filesystem::create_symlink(ToolProcess(Address(), {}).words.at(0), Path("run"));
  }

  /// The line in a shell, with TIME in place of what differs each time.
  std::string Print(const std::string& line) {
    Process shell({.words = {"sh", "-c", "cd '" + Path(".") + "' && " + line},
                   .environment = {{"DBUS_SYSTEM_BUS_ADDRESS", Address()}}});
    const ToolRun run = Finish(shell);
    EXPECT_EQ(run.errors, "") << line;
    return Masked(run.output);
  }
  static std::string Masked(const std::string& text) { return WithoutTimes(WithoutSeconds(text)); }
};

// What reads is asked until the simulated devices have got as far.
TEST_F(ReadmeTour, PrintsWhatItShows) {
  const std::vector<Step> steps = ReadSteps(ReadFile(TALOWIFI_SOURCE_DIR "/README.md"));
  EXPECT_GT(steps.size(), 20U);
  for (const Step& step : steps) {
    ASSERT_TRUE(step.line.starts_with("./run ")) << step.line;
    const std::string wanted = Masked(step.output);
    std::string printed = Print(step.line);
    const Deadline deadline;
    while (step.line.starts_with("./run get") && printed != wanted && !deadline.HasPassed()) {
      printed = Print(step.line);
    }
    ASSERT_EQ(printed, wanted) << step.line;
  }
}

}  // namespace

}  // namespace TALO::EndToEnd
