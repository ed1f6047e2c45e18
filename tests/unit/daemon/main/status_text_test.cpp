#include "daemon/main/service_manager.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

TEST(StatusText, CountsNetworksAndRadios) {
  EXPECT_EQ(StatusText(0, 3), "0 networks on 3 radios");
  EXPECT_EQ(StatusText(1, 2), "1 network on 2 radios");
  EXPECT_EQ(StatusText(12, 1), "12 networks on 1 radio");
}

}  // namespace

}  // namespace TALO::Wifid
