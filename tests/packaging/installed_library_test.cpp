// Other programs use the installed libraries as examples/README.md says.

#include "packaging/installed_tree.h"
#include "support/files.h"

#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class InstalledLibrary : public InstalledTree {
 protected:
  std::string Libraries() const { return Prefix() + "/" + TALOWIFI_LIBRARY_DIR; }

  ToolRun RunExample(const std::string& program) {
    Process example(
        {.words = {program},
         .environment = {{"DBUS_SYSTEM_BUS_ADDRESS", Address()}, {"LD_LIBRARY_PATH", Libraries()}}});
    return Finish(example);
  }

  void ExpectThatItListsNetworks(const std::string& program) {
    EXPECT_EQ(
        RunExample(program),
        (ToolRun{1, "",
                 "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n"}));
    StartDaemon();
    EXPECT_EQ(RunExample(program), Success(""));
    CreateNetwork("Home", 1);
    CreateNetwork("Caf\xe9", 2);
    EXPECT_EQ(RunExample(program), Success("1: Home is up\n2: Caf\xef\xbf\xbd is up\n"));
  }
};

TEST_F(InstalledLibrary, IsFoundByCMake) {
  const std::string build = Path("examples");
  Run({"cmake", "-G", "Ninja", "-S", TALOWIFI_EXAMPLES_DIR, "-B", build, "-DCMAKE_PREFIX_PATH=" + Prefix(),
       std::string("-DCMAKE_CXX_COMPILER=") + TALOWIFI_COMPILER});
  Run({"cmake", "--build", build});
  ExpectThatItListsNetworks(build + "/list_networks");
  const std::string json = RunExample(build + "/network_json").output;
  EXPECT_TRUE(json.starts_with("{\n\t\"activated\" : true,\n")) << json;
  EXPECT_NE(json.find("\n\t\"ssidHex\" : \"436166e9\",\n"), std::string::npos) << json;
}

TEST_F(InstalledLibrary, IsFoundByPkgConfig) {
  const auto compile = [this](const std::string& example, const std::string& package) {
    // It names the place where it will be; here it is somewhere else.
    Run({"sed", "-i", "s|^prefix=.*|prefix=" + Prefix() + "|",
         Libraries() + "/pkgconfig/" + package + ".pc"});
    const std::string program = Path(example);
    Run({"sh", "-c",
         std::string(TALOWIFI_COMPILER) + " -std=c++20 " + TALOWIFI_EXAMPLES_DIR + "/" + example +
             ".cpp -o " + program + " $(pkg-config --cflags --libs " + package + ")"},
        {{"PKG_CONFIG_PATH", Libraries() + "/pkgconfig"}});
    return program;
  };
  ExpectThatItListsNetworks(compile("list_networks", "talowifi"));
  EXPECT_TRUE(RunExample(compile("network_json", "talowifidaemon")).output.starts_with("{\n"));
}

// A header that stands alone includes all that it needs, and nothing that is not installed.
TEST_F(InstalledLibrary, HasHeadersThatStandAloneAndNameNoLibraryButJsoncpp) {
  const std::string headers = Prefix() + "/include/talowifi";
  std::string source;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(headers)) {
    if (!entry.is_regular_file()) {
      continue;
    }
    const std::string header = std::filesystem::relative(entry.path(), headers).generic_string();
    const std::string text = ReadFile(entry.path().string());
    for (const char* word : {"boost", "systemd", "magic_enum"}) {
      EXPECT_EQ(text.find(word), std::string::npos) << header << " has " << word;
    }
    if (header != "client/json_serializer.h") {
      EXPECT_EQ(text.find("json/"), std::string::npos) << header;
    }
    source += "#include <" + header + ">\n";
    WriteFile(Path("alone.cpp"), "#include <" + header + ">\n#include <" + header + ">\n");
    Run({"sh", "-c",
         std::string(TALOWIFI_COMPILER) + " -std=c++20 -Wall -Wextra -Werror -fsyntax-only -I" + headers +
             " $(pkg-config --cflags jsoncpp) " + Path("alone.cpp")});
  }
  for (const char* header :
       {"client/json_serializer.h", "client/log_level_helper.h", "client/records.h", "client/wifi_client.h",
        "client/wifi_client_for_mesh.h", "client/wifi_client_for_tool.h", "client/wifi_client_for_topo.h",
        "values/enum_names.h", "values/enums.h", "values/errors.h", "values/mac_address.h"}) {
    EXPECT_NE(source.find(std::string("<") + header + ">"), std::string::npos) << header;
  }
}

}  // namespace

}  // namespace TALO::EndToEnd
