// The unit that systemd is given, and what goes with it.

#include "packaging/installed_tree.h"
#include "support/files.h"

#include <sys/stat.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace TALO::EndToEnd {

namespace {

class InstalledService : public InstalledTree {
 protected:
  /// The unit with the program where it is now; it names the place where it will be.
  std::string Unit() const {
    std::string text = ReadFile(Prefix() + "/lib/systemd/system/talowifid.service");
    const std::string start = std::string("ExecStart=") + TALOWIFI_SBIN_DIR + "/talowifid\n";
    const auto at = text.find(start);
    if (at == std::string::npos) {
      ADD_FAILURE() << "the unit does not start " << start << text;
      return {};
    }
    text.replace(at, start.size(), "ExecStart=" + Prefix() + "/sbin/talowifid\n");
    const std::string path = Path("talowifid.service");
    WriteFile(path, text);
    return path;
  }
};

TEST_F(InstalledService, IsAUnitThatSystemdUnderstands) {
  Process verify({.words = {"systemd-analyze", "verify", "--man=no", Unit()}});
  EXPECT_EQ(Finish(verify), Success(""));
}

TEST_F(InstalledService, ExposesLittleToAnAttacker) {
  // In tenths, as systemd-analyze counts: 2.5.
  Run({"systemd-analyze", "security", "--offline=yes", "--threshold=25", "--no-pager", Unit()});
}

TEST_F(InstalledService, HasAUserAndAGroupAndADirectoryForItsState) {
  const std::string root = Path("root");
  std::filesystem::create_directories(root + "/etc");
  Run({"systemd-sysusers", "--root=" + root, Prefix() + "/lib/sysusers.d/talowifi.conf"});
  EXPECT_THAT(ReadFile(root + "/etc/passwd"),
              testing::ContainsRegex("talowifi:x:[0-9]+:[0-9]+:Wifi service:/var/lib/talowifi:"));
  EXPECT_THAT(ReadFile(root + "/etc/group"), testing::ContainsRegex("talowifi:x:[0-9]+:"));
  EXPECT_THAT(ReadFile(root + "/etc/group"), testing::ContainsRegex("netdev:x:[0-9]+:"));
  Run({"systemd-tmpfiles", "--root=" + root, "--create", Prefix() + "/lib/tmpfiles.d/talowifi.conf"});
  struct stat state {};
  ASSERT_EQ(stat((root + "/var/lib/talowifi").c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 07777U, 0700U);
}

TEST_F(InstalledService, ExplainsEveryMessageIdInTheCatalog) {
  const auto idsIn = [](const std::string& path, const std::string& before) {
    const std::string text = ReadFile(path);
    EXPECT_FALSE(text.empty()) << path;
    const std::regex id(before + "([0-9a-f]{32})");
    std::multiset<std::string> ids;
    for (std::sregex_iterator match(text.begin(), text.end(), id), end; match != end; ++match) {
      ids.insert((*match)[1]);
    }
    return ids;
  };
  const auto used = idsIn(std::string(TALOWIFI_SOURCE_DIR) + "/src/daemon/service/message_ids.h", "\"");
  EXPECT_FALSE(used.empty());
  EXPECT_EQ(used, idsIn(Prefix() + "/lib/systemd/catalog/talowifi.catalog", "\n-- "));
}

TEST_F(InstalledService, HasACatalogThatTheJournalUnderstands) {
  const std::string root = Path("root");
  std::filesystem::create_directories(root + "/var/lib/systemd/catalog");
  std::filesystem::create_directories(root + "/usr/lib");
  std::filesystem::copy(Prefix() + "/lib/systemd", root + "/usr/lib/systemd",
                        std::filesystem::copy_options::recursive);
  Run({"journalctl", "--root=" + root, "--update-catalog"});
  EXPECT_THAT(Run({"journalctl", "--root=" + root, "--list-catalog", "2ab109aa926b4d518b66ab37319b6f5d"}),
              testing::HasSubstr("A radio went up or down\n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
