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

}  // namespace

}  // namespace TALO::Wifid
