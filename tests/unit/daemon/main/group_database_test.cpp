#include "daemon/main/group_database.h"

#include "daemon/main/secrecy.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace TALO::Wifid {

namespace {

TEST(GroupDatabase, KnowsGroupsByName) {
  EXPECT_EQ(FindGroup("root"), std::optional<gid_t>(0));
  EXPECT_EQ(FindGroup("no-such-group"), std::nullopt);
  EXPECT_EQ(FindGroup(""), std::nullopt);
}

TEST(GroupDatabase, KnowsTheGroupsOfAUser) {
  EXPECT_TRUE(GroupsOf(0).contains(0));
  EXPECT_EQ(GroupsOf(4000000000), std::set<gid_t>{});
}

[[noreturn]] void ExitWithWhatIsOff() {
  KeepMemorySecret();
  rlimit limit{1, 1};
  const bool noCore = getrlimit(RLIMIT_CORE, &limit) == 0 && limit.rlim_cur == 0 && limit.rlim_max == 0;
  const bool notDumpable = prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 0;
  std::exit(noCore && notDumpable ? 0 : 1);
}

// In a process of its own: there is no way back.
TEST(KeepMemorySecret, SwitchesCoreFilesOff) {
  EXPECT_EXIT(ExitWithWhatIsOff(), testing::ExitedWithCode(0), "");
}

}  // namespace

}  // namespace TALO::Wifid
