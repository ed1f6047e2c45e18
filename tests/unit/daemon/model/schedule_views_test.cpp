#include "daemon/model/schedules.h"
#include "support/print_model.h"
#include "support/routers.h"
#include "support/zone_calendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace TALO::Wifid {
namespace {

using enum RadioFrequency;
using ScheduleMode::Customized;
using ScheduleMode::ValidFor;

/// Monday 12:00.
const std::int64_t kNoon = UTC(2026, 1, 5, 12);

/// Network 1 is on at noon and off at 13:00 on 2.4 GHz, off for good on 5 GHz; network 2 is off until 12:30
/// on one radio and always on on the other.
State ScheduledState() {
  State state = HomeState(TriBandRouter());
  state.networks[0].schedules = {{Band2_4GHz, ValidFor, kNoon + 3'600, {}},
                                 {Band5GHz_1, ValidFor, kNoon, {}}};
  state.networks[1].schedules = {{Band5GHz_1, Customized, 0, {{0, 10'080}}},
                                 {Band5GHz_2, Customized, 0, {{750, 780}}}};
  return state;
}

TEST(ScheduledOff, NamesWhatIsOffNow) {
  EXPECT_EQ(ScheduledOff(ScheduledState(), kNoon, Greenwich()),
            (std::set<NetworkOnRadio>{{1, Band5GHz_1}, {2, Band5GHz_2}}));
  EXPECT_EQ(ScheduledOff(ScheduledState(), kNoon + 1'800, Greenwich()),
            (std::set<NetworkOnRadio>{{1, Band5GHz_1}}));
  EXPECT_EQ(ScheduledOff(ScheduledState(), kNoon + 3'600, Greenwich()),
            (std::set<NetworkOnRadio>{{1, Band2_4GHz}, {1, Band5GHz_1}, {2, Band5GHz_2}}));
  EXPECT_EQ(ScheduledOff(ScheduledState(), kNoon - 1, Greenwich()),
            (std::set<NetworkOnRadio>{{2, Band5GHz_2}}));
}

TEST(ScheduledOff, IsEmptyWithoutSchedules) {
  EXPECT_EQ(ScheduledOff(HomeState(TriBandRouter()), kNoon, Greenwich()), std::set<NetworkOnRadio>{});
}

TEST(ScheduledOff, HoldsForNetworksThatAreNotActivatedToo) {
  State state = ScheduledState();
  state.networks[0].activated = false;
  EXPECT_EQ(ScheduledOff(state, kNoon, Greenwich()),
            (std::set<NetworkOnRadio>{{1, Band5GHz_1}, {2, Band5GHz_2}}));
}

TEST(NextSwitchOfAll, IsTheEarliest) {
  const State state = ScheduledState();
  EXPECT_EQ(NextSwitchOfAll(state, kNoon - 1, Greenwich()), kNoon);
  EXPECT_EQ(NextSwitchOfAll(state, kNoon, Greenwich()), kNoon + 1'800);
  EXPECT_EQ(NextSwitchOfAll(state, kNoon + 1'800, Greenwich()), kNoon + 3'600);
  EXPECT_EQ(NextSwitchOfAll(state, kNoon + 3'600, Greenwich()), UTC(2026, 1, 12, 12, 30));
}

TEST(NextSwitchOfAll, IsNothingWhereNoneSwitchesAgain) {
  State state = ScheduledState();
  state.networks[1].schedules.pop_back();
  EXPECT_EQ(NextSwitchOfAll(state, kNoon + 3'599, Greenwich()), kNoon + 3'600);
  EXPECT_EQ(NextSwitchOfAll(state, kNoon + 3'600, Greenwich()), std::nullopt);
  EXPECT_EQ(NextSwitchOfAll(HomeState(TriBandRouter()), kNoon, Greenwich()), std::nullopt);
}

TEST(ScheduleStatusOf, ShowsTheSecondsToTheNextSwitchOfEachRadio) {
  EXPECT_EQ(ScheduleStatusOf(ScheduledState(), kNoon, Greenwich()),
            (Wifi::ScheduleStatus{{1, {{Band2_4GHz, ValidFor, 3'600}, {Band5GHz_1, ValidFor, -1}}},
                                  {2, {{Band5GHz_1, Customized, -1}, {Band5GHz_2, Customized, 1'800}}}}));
  EXPECT_EQ(ScheduleStatusOf(ScheduledState(), kNoon + 1'799, Greenwich()),
            (Wifi::ScheduleStatus{{1, {{Band2_4GHz, ValidFor, 1'801}, {Band5GHz_1, ValidFor, -1}}},
                                  {2, {{Band5GHz_1, Customized, -1}, {Band5GHz_2, Customized, 1}}}}));
}

TEST(ScheduleStatusOf, LeavesOutNetworksWithoutSchedules) {
  State state = ScheduledState();
  state.networks[0].schedules.clear();
  EXPECT_EQ(ScheduleStatusOf(state, kNoon, Greenwich()),
            (Wifi::ScheduleStatus{{2, {{Band5GHz_1, Customized, -1}, {Band5GHz_2, Customized, 1'800}}}}));
  EXPECT_EQ(ScheduleStatusOf(HomeState(TriBandRouter()), kNoon, Greenwich()), Wifi::ScheduleStatus{});
}

TEST(ScheduleStatusOf, PutsTheRadiosInOrder) {
  State state = HomeState(TriBandRouter());
  state.networks[1].schedules = {{Band5GHz_2, ValidFor, kNoon + 5, {}},
                                 {Band2_4GHz, ValidFor, kNoon + 4, {}}};
  EXPECT_EQ(ScheduleStatusOf(state, kNoon, Greenwich()),
            (Wifi::ScheduleStatus{{2, {{Band2_4GHz, ValidFor, 4}, {Band5GHz_2, ValidFor, 5}}}}));
}

TEST(ScheduleStatusOf, ShowsASwitchThatIsTooFarAwayAsFarAsItCan) {
  // Two billion seconds from a right clock, seen by one that was set back to 1970.
  State state = HomeState(TriBandRouter());
  state.networks[0].schedules = {{Band2_4GHz, ValidFor, 2'147'483'647, {}},
                                 {Band5GHz_1, ValidFor, 2'147'483'648, {}},
                                 {Band5GHz_2, ValidFor, 4'000'000'000, {}}};
  EXPECT_EQ(ScheduleStatusOf(state, 0, Greenwich()),
            (Wifi::ScheduleStatus{{1,
                                   {{Band2_4GHz, ValidFor, 2'147'483'647},
                                    {Band5GHz_1, ValidFor, 2'147'483'647},
                                    {Band5GHz_2, ValidFor, 2'147'483'647}}}}));
}

}  // namespace
}  // namespace TALO::Wifid
