// What the shells offer when they complete a line with the tool's scripts. Neither finds the tool on the path
// or a bus in the environment.

#include "support/files.h"
#include "support/process.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace TALO::EndToEnd {

namespace {

using Words = std::vector<std::string>;

const Words kRadios = {"SmartConnect", "Band2_4GHz", "Band5GHz", "Band5GHz_1", "Band5GHz_2"};

struct Completion {
  const char* line;  ///< up to the cursor
  Words offers;
};

const std::vector<Completion> kOffers = {
    // Commands, in any letter case.
    {"talowifitool create", {"createNetwork", "createMACFilterProfile"}},
    {"talowifitool GETRADIOS", {"getRadioStatuses", "getRadioStatusesSimple", "getRadios"}},
    {"talowifitool getRadios", {"getRadioStatuses", "getRadioStatusesSimple", "getRadios"}},
    {"talowifitool getContext", {"getContext"}},
    {"talowifitool noSuch", {}},
    // Options not yet used.
    {"talowifitool createNetwork ", {"--ssid", "--password"}},
    {"talowifitool CREATENETWORK --p", {"--password"}},
    {"talowifitool createNetwork --ssid Home ", {"--password"}},
    {"talowifitool createNetwork --ssid Home --password correct-horse ", {}},
    {"talowifitool createNetwork --password correct-horse --s", {"--ssid"}},
    {"talowifitool getNetworks ", {}},
    {"talowifitool noSuch --", {}},
    {"talowifitool --help deactivate ", {"--id"}},
    // Names as values.
    {"talowifitool modifyLogLevel --level ", {"Error", "Warning", "Information", "Debug"}},
    {"talowifitool modifyLogLevel --level De", {"Debug"}},
    {"talowifitool modifyLogLevel --level=De", {"Debug"}},
    {"talowifitool modifyLogLevel --level=", {"Error", "Warning", "Information", "Debug"}},
    {"talowifitool modifyLogLevel --level de", {}},
    {"talowifitool rotatePassword --id 1 --radio ", kRadios},
    {"talowifitool rotatepassword --id=1 ", {"--radio"}},
    {"talowifitool setCountryCode --country U", {"UA", "UG", "UM", "US", "UY", "UZ"}},
    {"talowifitool swapBackhaulBand --enable ", {"0", "1"}},
    // Nothing for free values.
    {"talowifitool createNetwork --ssid ", {}},
    {"talowifitool createNetwork --ssid --", {}},
    {"talowifitool deleteNetwork --id ", {}},
    // A list goes on, or another option comes.
    {"talowifitool modifyMeshInfo --models ", {"Alder100", "Birch200", "Cedar300", "Dune40", "--isRepeater"}},
    {"talowifitool modifyMeshInfo --models Alder100 Dune40 ", {"Birch200", "Cedar300", "--isRepeater"}},
    {"talowifitool modifyMeshInfo --models Alder100 --isRepeater ", {"0", "1"}},
    {"talowifitool modifyMeshInfo --models Alder100 --isRepeater 1 ", {}},
    {"talowifitool setMACFilterGlobal --devices ", {}},
    {"talowifitool setMACFilterGlobal --devices phone ", {}},
    {"talowifitool setMACFilterGlobal --devices phone 0a:00:00:00:00:02 -",
     {"--enablePreventBroadcast", "--maximumBroadcast"}},
    {"talowifitool createMACFilterProfile --applyToAll 1 --action ", {"Allow", "Deny"}},
};

Words LinesOf(const std::string& text) {
  Words lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// The line as bash takes it apart, where an equal sign is a word.
Words BashWords(const std::string& line) {
  std::string apart;
  for (const char c : line) {
    apart += c == '=' ? std::string(" = ") : std::string(1, c);
  }
  Words words;
  std::istringstream stream(apart);
  for (std::string word; stream >> word;) {
    words.push_back(word);
  }
  if (line.ends_with(' ')) {
    words.emplace_back();
  }
  return words;
}

TEST(BashCompletion, OffersWhatMayComeNext) {
  // The file is sourced as the shell's completion would do it, and the function called that it registers.
  const std::string script = R"(. "$1" || exit
      [[ $(complete -p talowifitool) == 'complete -F _talowifitool talowifitool' ]] || exit
      shift
      COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=(left over)
      _talowifitool talowifitool
      for word in "${COMPREPLY[@]}"; do echo "$word"; done)";
  for (const Completion& completion : kOffers) {
    Words words = {"bash", "--norc", "--noprofile", "-c", script, "bash", TALOWIFI_DOCUMENTS "/talowifitool"};
    const Words typed = BashWords(completion.line);
    words.insert(words.end(), typed.begin(), typed.end());
    Process bash({.words = words, .environment = {{"PATH", "/nonexistent"}}});
    EXPECT_EQ(bash.Wait(), 0) << completion.line;
    EXPECT_THAT(LinesOf(bash.Output()), testing::UnorderedElementsAreArray(completion.offers))
        << completion.line;
    EXPECT_EQ(bash.Errors(), "") << completion.line;
  }
}

TEST(ZshCompletion, OffersWhatMayComeNext) {
  const TemporaryDirectory directory;
  const std::string offers = directory / "offers";
  Words words = {TALOWIFI_ZSH_COMPLETIONS, TALOWIFI_DOCUMENTS, offers};
  for (const Completion& completion : kOffers) {
    words.emplace_back(completion.line);
  }
  Process zsh({.words = words});
  ASSERT_EQ(zsh.Wait(), 0) << zsh.Output() << zsh.Errors();

  const Words lines = LinesOf(ReadFile(offers));
  auto start = lines.begin();
  for (const Completion& completion : kOffers) {
    const auto end = std::find(start, lines.end(), ".");
    ASSERT_NE(end, lines.end()) << completion.line;
    EXPECT_THAT(Words(start, end), testing::UnorderedElementsAreArray(completion.offers)) << completion.line;
    start = end + 1;
  }
  EXPECT_EQ(start, lines.end());
}

}  // namespace

}  // namespace TALO::EndToEnd
