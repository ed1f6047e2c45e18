#include "daemon/model/schedules.h"
#include "support/print_model.h"
#include "support/routers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

using enum RadioFrequency;
using ScheduleMode::Customized;
using ScheduleMode::ValidFor;
using Wifi::NetworkSchedule;
using Wifi::ScheduleWindow;

constexpr std::int64_t kNow = 1'800'000'000;

std::vector<ScheduleWindow> Windows(int count) {
  std::vector<ScheduleWindow> windows;
  for (int i = 0; i < count; ++i) {
    windows.push_back({i * 10, i * 10 + 5});
  }
  return windows;
}

/// The state after a schedule that is taken.
State Set(const State& state, const NetworkSchedule& schedule,
          const Capabilities& capabilities = TriBandRouter()) {
  const auto change = SetSchedule(state, capabilities, schedule, kNow);
  if (!change.Succeeded()) {
    ADD_FAILURE() << change.Why().sentence;
    return {};
  }
  return change.Value().state;
}

State Expect(std::vector<ScheduleState> schedules, const Capabilities& capabilities = TriBandRouter()) {
  State state = HomeState(capabilities);
  state.networks[0].schedules = std::move(schedules);
  return state;
}

TEST(SetSchedule, ValidForLastsSoManySecondsFromNow) {
  const State home = HomeState(TriBandRouter());
  EXPECT_EQ(Set(home, {1, Band2_4GHz, ValidFor, 1, {}}), Expect({{Band2_4GHz, ValidFor, 1'800'000'001, {}}}));
  EXPECT_EQ(Set(home, {1, Band2_4GHz, ValidFor, std::numeric_limits<int>::max(), {}}),
            Expect({{Band2_4GHz, ValidFor, 3'947'483'647, {}}}));
}

TEST(SetSchedule, CustomizedKeepsItsWindowsInTheOrderOfTheWeek) {
  EXPECT_EQ(Set(HomeState(TriBandRouter()), {1, Band5GHz_2, Customized, 0, {{600, 660}, {0, 60}, {60, 120}}}),
            Expect({{Band5GHz_2, Customized, 0, {{0, 60}, {60, 120}, {600, 660}}}}));
}

TEST(SetSchedule, WindowsMayReachBothEndsOfTheWeekAndLastAMinute) {
  const State home = HomeState(TriBandRouter());
  EXPECT_EQ(Set(home, {1, Band2_4GHz, Customized, 0, {{0, 10080}}}),
            Expect({{Band2_4GHz, Customized, 0, {{0, 10080}}}}));
  EXPECT_EQ(Set(home, {1, Band2_4GHz, Customized, 0, {{0, 1}, {10079, 10080}}}),
            Expect({{Band2_4GHz, Customized, 0, {{0, 1}, {10079, 10080}}}}));
}

TEST(SetSchedule, TakesSixtyFourWindows) {
  EXPECT_EQ(Set(HomeState(TriBandRouter()), {1, Band2_4GHz, Customized, 0, Windows(64)}),
            Expect({{Band2_4GHz, Customized, 0, Windows(64)}}));
}

TEST(SetSchedule, SmartConnectMeansEveryRadioInTheirOrder) {
  EXPECT_EQ(Set(HomeState(TriBandRouter()), {1, SmartConnect, ValidFor, 60, {}}),
            Expect({{Band2_4GHz, ValidFor, kNow + 60, {}},
                    {Band5GHz_1, ValidFor, kNow + 60, {}},
                    {Band5GHz_2, ValidFor, kNow + 60, {}}}));
  EXPECT_EQ(
      Set(HomeState(DualBandRouter()), {1, SmartConnect, ValidFor, 60, {}}, DualBandRouter()),
      Expect({{Band2_4GHz, ValidFor, kNow + 60, {}}, {Band5GHz, ValidFor, kNow + 60, {}}}, DualBandRouter()));
}

TEST(SetSchedule, GoesToTheRadioThatServesTheBand) {
  const auto dual = DualBandRouter();
  EXPECT_EQ(Set(HomeState(dual), {1, Band5GHz_2, ValidFor, 60, {}}, dual),
            Expect({{Band5GHz, ValidFor, kNow + 60, {}}}, dual));
  EXPECT_EQ(Set(HomeState(TriBandRouter()), {1, Band5GHz, ValidFor, 60, {}}),
            Expect({{Band5GHz_1, ValidFor, kNow + 60, {}}}));
}

TEST(SetSchedule, ReplacesTheScheduleOfThatRadioAloneWhateverItsMode) {
  const State before = Expect({{Band2_4GHz, Customized, 0, {{0, 60}}}, {Band5GHz_2, ValidFor, 7, {}}});
  EXPECT_EQ(Set(before, {1, Band2_4GHz, ValidFor, 60, {}}),
            Expect({{Band2_4GHz, ValidFor, kNow + 60, {}}, {Band5GHz_2, ValidFor, 7, {}}}));
  EXPECT_EQ(Set(before, {1, Band5GHz_2, Customized, 0, {{5, 6}}}),
            Expect({{Band2_4GHz, Customized, 0, {{0, 60}}}, {Band5GHz_2, Customized, 0, {{5, 6}}}}));
  EXPECT_EQ(Set(before, {1, Band5GHz_1, ValidFor, 60, {}}), Expect({{Band2_4GHz, Customized, 0, {{0, 60}}},
                                                                    {Band5GHz_1, ValidFor, kNow + 60, {}},
                                                                    {Band5GHz_2, ValidFor, 7, {}}}));
  EXPECT_EQ(Set(before, {1, SmartConnect, Customized, 0, {{5, 6}}}),
            Expect({{Band2_4GHz, Customized, 0, {{5, 6}}},
                    {Band5GHz_1, Customized, 0, {{5, 6}}},
                    {Band5GHz_2, Customized, 0, {{5, 6}}}}));
}

TEST(SetSchedule, NeitherSecondsNorWindowsTakeItAwayWhateverItsMode) {
  const State before = Expect({{Band2_4GHz, Customized, 0, {{0, 60}}}, {Band5GHz_2, ValidFor, 7, {}}});
  EXPECT_EQ(Set(before, {1, Band2_4GHz, ValidFor, 0, {}}), Expect({{Band5GHz_2, ValidFor, 7, {}}}));
  EXPECT_EQ(Set(before, {1, Band5GHz_2, Customized, 0, {}}),
            Expect({{Band2_4GHz, Customized, 0, {{0, 60}}}}));
  EXPECT_EQ(Set(before, {1, Band5GHz_1, ValidFor, 0, {}}), before);
  EXPECT_EQ(Set(before, {1, SmartConnect, ValidFor, 0, {}}), Expect({}));
}

TEST(SetSchedule, SmartConnectAlsoReplacesThatOfARadioThatIsGone) {
  const auto dual = DualBandRouter();
  const State before = Expect({{Band5GHz_2, ValidFor, 7, {}}}, dual);
  EXPECT_EQ(Set(before, {1, SmartConnect, Customized, 0, {}}, dual), Expect({}, dual));
}

TEST(SetSchedule, LeavesOtherNetworksAlone) {
  State before = HomeState(TriBandRouter());
  before.networks[1].schedules = {{Band2_4GHz, ValidFor, 7, {}}};
  State after = before;
  after.networks[0].schedules = {{Band2_4GHz, ValidFor, kNow + 60, {}}};
  EXPECT_EQ(Set(before, {1, Band2_4GHz, ValidFor, 60, {}}), after);
}

TEST(SetSchedule, RefusesAndChangesNothing) {
  struct Row {
    NetworkSchedule schedule;
    ErrorCode code;
    std::string sentence;
  };
  constexpr auto kBadRadio = static_cast<RadioFrequency>(5);
  constexpr auto kBadMode = static_cast<ScheduleMode>(2);
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  const std::vector<Row> rows = {
      {{3, Band2_4GHz, ValidFor, 60, {}}, ErrorCode::NotFound, "there is no network 3"},
      {{0, Band2_4GHz, ValidFor, 60, {}}, ErrorCode::NotFound, "there is no network 0"},
      {{1, RadioFrequency::Error, ValidFor, 60, {}},
       ErrorCode::InvalidArgument,
       "the radio Error does not exist"},
      {{1, kBadRadio, ValidFor, 60, {}}, ErrorCode::InvalidArgument, "the radio 5 does not exist"},
      {{1, Band2_4GHz, ScheduleMode::Error, 0, {}},
       ErrorCode::InvalidArgument,
       "the schedule mode Error does not exist"},
      {{1, Band2_4GHz, kBadMode, 60, {}}, ErrorCode::InvalidArgument, "the schedule mode 2 does not exist"},
      {{1, Band2_4GHz, ValidFor, -1, {}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 is valid for -1 seconds, it must be at least 1, or 0 for none"},
      {{1, Band2_4GHz, ValidFor, kLeast, {}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 is valid for -2147483648 seconds, it must be at least 1, or 0 for none"},
      {{1, Band2_4GHz, ValidFor, 60, {{0, 60}, {70, 80}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has 2 windows, which ValidFor does not take"},
      {{1, Band2_4GHz, Customized, 60, {{0, 60}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 is valid for 60 seconds, which Customized does not take"},
      {{1, Band2_4GHz, Customized, 60, {}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 is valid for 60 seconds, which Customized does not take"},
      {{1, Band2_4GHz, Customized, 0, Windows(65)},
       ErrorCode::LimitReached,
       "the schedule of network 1 has 65 windows, it may have 64"},
      {{1, Band2_4GHz, Customized, 0, {{-1, 60}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the window -1 to 60, the week is from 0 to 10080"},
      {{1, Band2_4GHz, Customized, 0, {{10079, 10081}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the window 10079 to 10081, the week is from 0 to 10080"},
      {{1, Band2_4GHz, Customized, 0, {{kLeast, kMost}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the window -2147483648 to 2147483647, the week is from 0 to 10080"},
      {{1, Band2_4GHz, Customized, 0, {{10080, 10080}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the window 10080 to 10080, which is empty"},
      {{2, Band2_4GHz, Customized, 0, {{0, 60}, {600, 600}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 2 has the window 600 to 600, which is empty"},
      {{1, Band2_4GHz, Customized, 0, {{601, 600}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the window 601 to 600, which ends before it starts"},
      {{1, Band2_4GHz, Customized, 0, {{59, 120}, {0, 60}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the windows 0 to 60 and 59 to 120, which overlap"},
      {{1, SmartConnect, Customized, 0, {{0, 60}, {0, 60}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the windows 0 to 60 and 0 to 60, which overlap"},
      {{1, Band2_4GHz, Customized, 0, {{0, 600}, {700, 800}, {60, 120}}},
       ErrorCode::InvalidArgument,
       "the schedule of network 1 has the windows 0 to 600 and 60 to 120, which overlap"},
  };
  const State home = HomeState(TriBandRouter());
  for (const Row& row : rows) {
    SCOPED_TRACE(row.sentence);
    const auto change = SetSchedule(home, TriBandRouter(), row.schedule, kNow);
    ASSERT_FALSE(change.Succeeded());
    EXPECT_EQ(change.Why(), (Refusal{row.code, row.sentence}));
  }
  EXPECT_EQ(home, HomeState(TriBandRouter()));
}

}  // namespace
}  // namespace TALO::Wifid
