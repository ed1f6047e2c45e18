// The tool as it is installed: what it starts with, and what it fetches later.

#include "packaging/installed_tree.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace TALO::EndToEnd {

namespace {

using testing::HasSubstr;
using testing::Not;

class InstalledTool : public InstalledTree {
 protected:
  std::string Tool() const { return Prefix() + "/bin/talowifitool"; }
  std::string Module() const { return Prefix() + "/" + TALOWIFI_MODULE_DIR + "/talowifitool-json.so"; }

  ToolRun RunInstalledTool(const std::string& command) {
    ProcessSetup setup = ToolProcess(Address(), {command});
    setup.words.front() = Tool();
    Process process(setup);
    return Finish(process);
  }
};

#ifndef TALOWIFI_SANITIZED  // whose runtime is itself a shared library
TEST_F(InstalledTool, StartsWithoutTheSharedRuntimeAndTheLibraryForJSON) {
  const std::string needed = Run({"objdump", "-p", Tool()});
  EXPECT_THAT(needed, HasSubstr("NEEDED               libsystemd.so.0\n"));
  for (const char* library : {"libstdc++", "libgcc_s", "libjsoncpp", "libboost", "libtalowifi"}) {
    EXPECT_THAT(needed, Not(HasSubstr(library)));
  }
}
#endif

TEST_F(InstalledTool, FindsItsModuleWhereverItIsInstalled) {
  StartDaemon();
  EXPECT_EQ(RunInstalledTool("getNetworks"), Success("[]\n\n"));
  CreateNetwork("Home", 1);
  EXPECT_THAT(RunInstalledTool("getNetworks").output, HasSubstr("\n\t\t\"ssid\" : \"Home\",\n"));
}

TEST_F(InstalledTool, SaysThatItsModuleIsMissingAndPrintsNoJSON) {
  std::filesystem::remove(Module());
  StartDaemon();
  EXPECT_EQ(
      RunInstalledTool("getNetworks"),
      Failure("cannot print JSON: talowifitool-json.so: cannot open shared object file: No such file or "
              "directory\n"));
  EXPECT_EQ(RunInstalledTool("getNetworkInterfaces"), Success("\n"));
}

TEST_F(InstalledTool, SaysThatItsModuleIsDamaged) {
  std::filesystem::resize_file(Module(), 0);
  StartDaemon();
  // It is looked for from where the tool is.
  EXPECT_EQ(RunInstalledTool("getNetworks"),
            Failure("cannot print JSON: " + Prefix() + "/bin/../" + TALOWIFI_MODULE_DIR +
                    "/talowifitool-json.so: file too short\n"));
}

TEST_F(InstalledTool, PrintsNothingByAModuleOfAnotherVersion) {
  std::filesystem::copy_file(TALOWIFI_OLD_MODULE, Module(),
                             std::filesystem::copy_options::overwrite_existing);
  StartDaemon();
  EXPECT_EQ(RunInstalledTool("getNetworks"),
            Failure("cannot print JSON: the module is of version 0.0.1, the program of another\n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
