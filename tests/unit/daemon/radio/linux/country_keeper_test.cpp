#include "daemon/radio/linux/country_keeper.h"

#include "support/machine/fake_machine.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;

class CountryKeeperTest : public testing::Test {
 protected:
  void Require(CountryCode country, const std::string& name = "") {
    keeper_->Require(country,
                     [this, name](const Result<void>& result) { lines_.push_back(name + Describe(result)); });
  }

  FakeMachine machine_;
  std::unique_ptr<CountryKeeper> keeper_ = std::make_unique<CountryKeeper>(machine_.kernel, machine_.timers);
  Lines lines_;
};

TEST_F(CountryKeeperTest, OneThatIsInForceIsThereAtOnce) {
  machine_.kernel.EnforceCountry("DE");
  Require(CountryCode::DE);
  EXPECT_EQ((Lines{"done"}), lines_);
  EXPECT_TRUE(machine_.kernel.countryRequests.empty());
}

TEST_F(CountryKeeperTest, OneThatComesLaterIsWaitedFor) {
  Require(CountryCode::DE);
  machine_.Advance(49);
  EXPECT_EQ(Lines(), lines_);
  machine_.Advance(1);
  EXPECT_EQ((Lines{"done"}), lines_);
  machine_.Advance(10'000);
  EXPECT_EQ((Lines{"done"}), lines_);
}

TEST_F(CountryKeeperTest, OneThatTheKernelDoesNotKnowFailsAfterFiveSeconds) {
  Require(CountryCode::JP);
  machine_.Advance(4999);
  EXPECT_EQ(Lines(), lines_);
  machine_.Advance(1);
  EXPECT_EQ((Lines{"RadioFailed the kernel does not take the country JP: it has the rules of the world"}),
            lines_);
}

TEST_F(CountryKeeperTest, OneThatNeverComesFailsWithTheOneThatIsThere) {
  machine_.kernel.EnforceCountry("FR");
  machine_.kernel.takesCountries = false;
  Require(CountryCode::DE);
  machine_.Advance(5000);
  EXPECT_EQ((Lines{"RadioFailed the kernel does not take the country DE: it has the rules of \"FR\""}),
            lines_);
}

// A station has heard of another country: the kernel goes by what both allow from then on.
TEST_F(CountryKeeperTest, WhatTwoCountriesAllowIsTakenForTheOneThatWasRequired) {
  machine_.kernel.takesCountries = false;
  Require(CountryCode::DE);
  machine_.kernel.EnforceCountry("98");
  machine_.Advance(5000);
  EXPECT_EQ((Lines{"done"}), lines_);
  lines_.clear();
  // Again without a wait; another is asked for.
  Require(CountryCode::DE);
  EXPECT_EQ((Lines{"done"}), lines_);
}

TEST_F(CountryKeeperTest, SeveralWaitEachForItsOwn) {
  Require(CountryCode::DE, "first ");
  Require(CountryCode::DE, "second ");
  Require(CountryCode::JP, "third ");
  machine_.Advance(50);
  EXPECT_EQ((Lines{"first done", "second done"}), lines_);
  machine_.kernel.EnforceCountry("JP");
  EXPECT_EQ((Lines{"first done", "second done", "third done"}), lines_);
}

TEST_F(CountryKeeperTest, WhoIsServedMayRequireTheNext) {
  keeper_->Require(CountryCode::DE, [this](const Result<void>&) { Require(CountryCode::FR); });
  machine_.Advance(50);
  EXPECT_EQ(Lines(), lines_);
  machine_.Advance(50);
  EXPECT_EQ((Lines{"done"}), lines_);
}

TEST_F(CountryKeeperTest, ARefusalOfTheKernelIsGiven) {
  machine_.kernel.refusals["RequestCountry"] = "Operation not permitted";
  Require(CountryCode::DE);
  machine_.kernel.broken = {"GetCountry"};
  Require(CountryCode::DE);
  ASSERT_EQ(2U, lines_.size());
  EXPECT_EQ("RadioFailed DE: Operation not permitted", lines_[0]);
  EXPECT_TRUE(lines_[1].starts_with("RadioFailed the kernel does not answer: GetCountry")) << lines_[1];
}

TEST_F(CountryKeeperTest, AKernelThatCannotBeAskedIsAskedAgainAtTheDeadline) {
  Require(CountryCode::DE, "first ");
  machine_.kernel.broken = {"GetCountry"};
  machine_.Advance(4000);
  EXPECT_EQ(Lines(), lines_);
  machine_.kernel.broken.clear();
  machine_.Advance(1000);
  EXPECT_EQ((Lines{"first done"}), lines_);
  Require(CountryCode::FR);
  machine_.kernel.broken = {"GetCountry"};
  machine_.Advance(5000);
  ASSERT_EQ(2U, lines_.size());
  EXPECT_TRUE(lines_[1].starts_with("RadioFailed the kernel does not answer: GetCountry")) << lines_[1];
}

TEST_F(CountryKeeperTest, NobodyIsServedAfterItsEnd) {
  Require(CountryCode::DE);
  keeper_.reset();
  machine_.Advance(10'000);
  EXPECT_EQ(Lines(), lines_);
}

}  // namespace

}  // namespace TALO::Wifid
