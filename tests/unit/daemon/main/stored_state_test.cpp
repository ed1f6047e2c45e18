#include "daemon/main/stored_state.h"

#include "support/captured_stream.h"
#include "support/fake_doors.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <iostream>

namespace TALO::Wifid {

namespace {

TEST(LoadState, SwitchesABroadcastLimitOffThatTheRadiosCannotKeepToAndSaysSo) {
  Journal journal;
  FakeStore store(journal);
  Capabilities router = DualBandRouter();
  State state = HomeState(router);
  state.macFilterGlobal = {{}, true, 100};
  ASSERT_TRUE(store.Save(state).Succeeded());
  const Log log(Severity::Warning);
  {
    const CapturedStream errors(std::cerr);
    EXPECT_EQ(state, LoadState(store, router, CountryCode::DE, log));
    EXPECT_EQ("", errors.Text());
  }
  for (RadioCapability& radio : router.radios) {
    radio.limitsBroadcasts = false;
  }
  const CapturedStream errors(std::cerr);
  state.macFilterGlobal.enablePreventBroadcast = false;
  EXPECT_EQ(state, LoadState(store, router, CountryCode::DE, log));
  EXPECT_NE(std::string::npos,
            errors.Text().find(
                "the broadcast limit is switched off: radios of this router cannot limit broadcasts: "
                "Band2_4GHz, Band5GHz\n"))
      << errors.Text();
}

TEST(LoadState, SaysWhichRadioStaysOffForWantOfAChannel) {
  Journal journal;
  FakeStore store(journal);
  Capabilities router = TriBandRouter();
  router.radios[2].findsRadars = false;
  const Log log(Severity::Warning);
  const std::string why =
      "the radio Band5GHz_2 cannot look out for radars (DFS), which all of its channels take in the country "
      "DE: it stays off\n";
  for (const bool wasSetUp : {false, true}) {
    const CapturedStream errors(std::cerr);
    const State state = LoadState(store, router, CountryCode::DE, log);
    EXPECT_EQ(MakeFirstState(router, CountryCode::DE), state);
    EXPECT_NE(std::string::npos, errors.Text().find(why)) << wasSetUp << errors.Text();
    ASSERT_TRUE(store.Save(MakeFirstState(TriBandRouter(), CountryCode::DE)).Succeeded());
  }
}

}  // namespace

}  // namespace TALO::Wifid
