#include "daemon/main/kernel_random.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

TEST(KernelRandom, DrawsAsManyBytesAsAsked) {
  KernelRandom random;
  // The kernel gives 256 bytes at once whatever happens, and more in pieces.
  for (const std::size_t count : {0U, 1U, 16U, 256U, 257U, 100000U}) {
    EXPECT_EQ(random.Draw(count).size(), count);
  }
}

TEST(KernelRandom, DrawsOtherBytesEachTime) {
  KernelRandom random;
  std::set<std::string> drawn;
  for (int i = 0; i < 100; ++i) {
    drawn.insert(random.Draw(16));
  }
  EXPECT_EQ(drawn.size(), 100U);
}

TEST(KernelRandom, FillsAllOfThem) {
  // Were a part left at its start value, that byte would be the same in each.
  KernelRandom random;
  constexpr std::size_t kCount = 1000;
  std::vector<std::set<char>> bytes(kCount);
  for (int i = 0; i < 20; ++i) {
    const std::string drawn = random.Draw(kCount);
    for (std::size_t at = 0; at < kCount; ++at) {
      bytes[at].insert(drawn[at]);
    }
  }
  for (std::size_t at = 0; at < kCount; ++at) {
    EXPECT_GT(bytes[at].size(), 1U) << at;
  }
}

}  // namespace

}  // namespace TALO::Wifid
