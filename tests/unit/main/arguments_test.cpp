#include "main/arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Tool {

namespace {

using Words = std::vector<std::string>;

/// Words one behind the other, each ended by a zero, as the kernel lays them out.
class ArgumentArea {
 public:
  explicit ArgumentArea(const Words& words) {
    for (const std::string& word : words) {
      area_ += word + '\0';
    }
    std::size_t at = 0;
    for (const std::string& word : words) {
      pointers_.push_back(area_.data() + at);
      at += word.size() + 1;
    }
    pointers_.push_back(nullptr);
  }

  TakenArguments Take() { return {static_cast<int>(pointers_.size()) - 1, pointers_.data()}; }
  const std::string& Text() const { return area_; }

 private:
  std::string area_;
  std::vector<char*> pointers_;
};

Words WordsOf(const TakenArguments& arguments) {
  return {arguments.Words(), arguments.Words() + arguments.Count()};
}

TEST(TakenArguments, AreTheWordsThatWereGiven) {
  const Words words = {"talowifitool", "createNetwork", "--ssid", "", "--password", "correct horse"};
  ArgumentArea area(words);
  const TakenArguments arguments = area.Take();
  EXPECT_EQ(WordsOf(arguments), words);
  EXPECT_EQ(arguments.Words()[arguments.Count()], nullptr);
}

TEST(TakenArguments, LeaveTheProgramAndTheCommandBehind) {
  ArgumentArea area({"talowifitool", "CREATENETWORK", "--ssid", "Home", "--password=secret"});
  const TakenArguments arguments = area.Take();
  EXPECT_EQ(area.Text(), std::string("talowifitool\0CREATENETWORK\0", 27) + std::string(7 + 5 + 18, '\0'));
}

TEST(TakenArguments, LeaveNoWordBehindThatOnlyMayBeACommand) {
  ArgumentArea area({"talowifitool", "getNetwork", "getNetworks", "help", "getRadios"});
  const TakenArguments arguments = area.Take();
  EXPECT_EQ(area.Text(), std::string("talowifitool\0", 13) + std::string(11, '\0') +
                             std::string("getNetworks\0", 12) + std::string(5 + 10, '\0'));
}

TEST(TakenArguments, MayBeNoneAtAll) {
  ArgumentArea area({"talowifitool"});
  EXPECT_EQ(WordsOf(area.Take()), Words{"talowifitool"});
  ArgumentArea empty(Words{});
  EXPECT_EQ(empty.Take().Count(), 0);
}

}  // namespace

}  // namespace TALO::Tool
