#include "contract/include_graph.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace TALO::Contract {

namespace {

namespace fs = std::filesystem;

using Sentences = std::vector<std::string>;

/// Every C++ file in src/.
std::vector<SourceFile> ReadSources() {
  const fs::path top = TALOWIFI_SOURCE_DIRECTORY;
  std::vector<SourceFile> files;
  for (const auto& entry : fs::recursive_directory_iterator(top)) {
    const std::string extension = entry.path().extension().string();
    if (entry.is_regular_file() && (extension == ".h" || extension == ".cpp")) {
      files.push_back({fs::relative(entry.path(), top).generic_string(), ReadFile(entry.path().string())});
    }
  }
  std::ranges::sort(files, {}, &SourceFile::path);
  return files;
}

/// What is found in one file of these lines.
Sentences Check(const std::string& path, const std::string& text) { return FindViolations({{path, text}}); }

std::string Lines(int count) {
  std::string text;
  for (int line = 0; line < count; ++line) {
    text += "// a line\n";
  }
  return text;
}

TEST(Sources, IncludeOnlyWhatTheirRoomMay) { EXPECT_EQ(FindViolations(ReadSources()), Sentences{}); }

TEST(Sources, AreReadFromEveryRoom) {
  std::set<std::string> rooms;
  std::set<std::string> paths;
  for (const SourceFile& file : ReadSources()) {
    rooms.insert(RoomOf(file.path));
    paths.insert(file.path);
    EXPECT_FALSE(file.text.empty()) << file.path;
  }
  EXPECT_EQ(rooms, (std::set<std::string>{"bus", "cli", "client", "commands", "daemon/json", "daemon/main",
                                          "daemon/model", "daemon/radio", "daemon/service", "daemon/store",
                                          "daemon/system", "main", "reference", "values"}));
  for (const char* path :
       {"main/main.cpp", "daemon/main/main.cpp", "client/record_descriptions.h", "client/record_members.h",
        "daemon/model/state_description.h", "daemon/radio/simulated/scenario_description.h"}) {
    EXPECT_TRUE(paths.contains(path)) << path;
  }
}

/// The rooms that each may include, itself left out: what the checker is held against.
const std::vector<std::pair<std::string, std::set<std::string>>> kAllowed = {
    {"values", {}},
    {"client", {"values"}},
    {"cli", {"client", "values"}},
    {"commands", {"cli", "client", "values"}},
    {"main", {"commands", "cli", "client", "values"}},
    {"bus", {"client", "values"}},
    {"daemon/model", {"client", "values"}},
    {"daemon/json", {"client", "values"}},
    {"daemon/store", {"daemon/json", "daemon/model", "client", "values"}},
    {"daemon/radio", {"daemon/json", "daemon/model", "client", "values"}},
    {"daemon/system", {"daemon/radio", "daemon/store", "daemon/model", "client", "values"}},
    {"daemon/service", {"daemon/model", "daemon/store", "daemon/radio", "bus", "client", "values"}},
    {"daemon/main",
     {"daemon/model", "daemon/store", "daemon/radio", "daemon/system", "daemon/service", "bus", "cli",
      "client", "values"}},
    {"reference", {"commands", "cli", "daemon/main", "bus", "client", "values"}},
};

TEST(FindViolations, AllowsExactlyTheEdgesOfTheTable) {
  for (const auto& [from, allowed] : kAllowed) {
    for (const auto& [to, unused] : kAllowed) {
      std::ostringstream sentence;
      sentence << "src/" << from << "/file.cpp:2: \"" << to << "/other.h\" is not allowed: " << from
               << " may not include " << to;
      const bool mayInclude = from == to || allowed.contains(to);
      EXPECT_EQ(Check(from + "/file.cpp", "\n#include \"" + to + "/other.h\"\n"),
                mayInclude ? Sentences{} : Sentences{sentence.str()});
    }
  }
}

TEST(FindViolations, KeepsLibrariesInTheirRooms) {
  struct Row {
    std::string header;
    std::string name;
    std::set<std::string> rooms;
  };
  const std::vector<Row> rows = {
      {"systemd/sd-bus.h", "sd-bus and sd-event", {"bus", "daemon/service", "daemon/main", "daemon/system"}},
      {"systemd/sd-event.h",
       "sd-bus and sd-event",
       {"bus", "daemon/service", "daemon/main", "daemon/system"}},
      {"systemd/sd-daemon.h",
       "sd-bus and sd-event",
       {"bus", "daemon/service", "daemon/main", "daemon/system"}},
      {"boost/any.hpp", "Boost", {"cli", "commands", "main", "daemon/main", "reference"}},
      {"netlink/msg.h", "libnl", {"daemon/system"}},
      {"netlink/genl/genl.h", "libnl", {"daemon/system"}},
      {"linux/nl80211.h", "nl80211", {"daemon/system"}},
      {"json/value.h", "jsoncpp", {"client", "commands", "daemon/json"}},
      {"magic_enum/magic_enum.hpp", "magic_enum", {"values"}},
      {"magic_enum.hpp", "magic_enum", {"values"}},
  };
  for (const Row& row : rows) {
    for (const auto& [room, unused] : kAllowed) {
      const Sentences found = Check(room + "/file.h", "#include <" + row.header + ">\n");
      if (row.rooms.contains(room)) {
        EXPECT_EQ(found, Sentences{}) << row.header << " in " << room;
      } else {
        EXPECT_EQ(found, (Sentences{"src/" + room + "/file.h:1: \"" + row.header +
                                    "\" is not allowed: " + row.name + " has no place here"}));
      }
    }
  }
}

TEST(FindViolations, LetsFiveFilesIncludeBoost) {
  const std::string text = "#include <boost/hana/adapt_struct.hpp>\n";
  EXPECT_EQ(Check("client/record_descriptions.h", text), Sentences{});
  EXPECT_EQ(Check("client/record_members.h", text), Sentences{});
  EXPECT_EQ(Check("daemon/model/state_description.h", text), Sentences{});
  EXPECT_EQ(Check("daemon/radio/simulated/scenario_description.h", text), Sentences{});
  EXPECT_EQ(Check("daemon/store/checksum.cpp", "#include <boost/crc.hpp>\n"), Sentences{});
  EXPECT_EQ(Check("client/records.h", text),
            (Sentences{"src/client/records.h:1: \"boost/hana/adapt_struct.hpp\" is not allowed: Boost has no "
                       "place here"}));
  EXPECT_EQ(Check("daemon/model/state.h", text).size(), 1U);
  EXPECT_EQ(Check("daemon/radio/simulated/scenario.h", text).size(), 1U);
  EXPECT_EQ(Check("client/record_members.h", "#include <systemd/sd-bus.h>\n").size(), 1U);
}

TEST(FindViolations, ReadsIncludesHoweverTheyAreWritten) {
  const Sentences expected = {"src/values/a.h:1: \"bus/codec.h\" is not allowed: values may not include bus"};
  for (const char* line :
       {"#include \"bus/codec.h\"", "  #include \"bus/codec.h\"", "#  include \"bus/codec.h\"",
        "#include\"bus/codec.h\"", "\t#\tinclude\t\"bus/codec.h\"  // why", "#include \"bus/codec.h\"\r\n",
        "#include <bus/codec.h>"}) {
    EXPECT_EQ(Check("values/a.h", line), expected) << line;
  }
  EXPECT_EQ(Check("values/a.h", "#include \"boost/any.hpp\"\n"),
            (Sentences{"src/values/a.h:1: \"boost/any.hpp\" is not allowed: Boost has no place here"}));
}

TEST(FindViolations, PassesOverWhatIsNoIncludeOfOurs) {
  EXPECT_EQ(Check("values/a.h",
                  "#include <vector>\n#include <sys/stat.h>\n// #include \"bus/codec.h\"\n#pragma once\n"
                  "const char* text = \"#include <boost/any.hpp>\";\n#includes \"\"\n#include\n#\n\n"),
            Sentences{});
}

TEST(FindViolations, NamesEveryFileAndLine) {
  EXPECT_EQ(
      FindViolations({{"values/a.h", "#pragma once\n#include \"bus/a.h\"\n\n#include \"cli/a.h\"\n"},
                      {"cli/a.h", "#include \"values/a.h\"\n"},
                      {"daemon/radio/simulated/a.cpp", "#include \"daemon/service/a.h\"\n"}}),
      (Sentences{"src/values/a.h:2: \"bus/a.h\" is not allowed: values may not include bus",
                 "src/values/a.h:4: \"cli/a.h\" is not allowed: values may not include cli",
                 "src/daemon/radio/simulated/a.cpp:1: \"daemon/service/a.h\" is not allowed: daemon/radio "
                 "may not include daemon/service"}));
}

TEST(FindViolations, KnowsNoOtherRooms) {
  EXPECT_EQ(Check("values/a.h", "#include \"a.h\"\n"),
            (Sentences{"src/values/a.h:1: \"a.h\" is not allowed: it is in no room"}));
  EXPECT_EQ(Check("values/a.h", "#include \"../bus/codec.h\"\n"),
            (Sentences{"src/values/a.h:1: \"../bus/codec.h\" is not allowed: it is in no room"}));
  EXPECT_EQ(
      Check("daemon/other/a.h", "#include \"values/a.h\"\n"),
      (Sentences{"src/daemon/other/a.h:1: \"values/a.h\" is not allowed: no room may not include values",
                 "src/daemon/other/a.h:1: the file is in no room"}));
}

TEST(FindViolations, RefusesAFileOfMoreThan400Lines) {
  EXPECT_EQ(Check("cli/a.cpp", Lines(400)), Sentences{});
  EXPECT_EQ(Check("cli/a.cpp", Lines(401)),
            (Sentences{"src/cli/a.cpp:401: the file has more than 400 lines"}));
  EXPECT_EQ(Check("cli/a.cpp", Lines(400) + "// without a line end"),
            (Sentences{"src/cli/a.cpp:401: the file has more than 400 lines"}));
}

TEST(FindViolations, RefusesAMainFileOf100Lines) {
  for (const std::string path : {"main/main.cpp", "daemon/main/main.cpp"}) {
    EXPECT_EQ(Check(path, Lines(99)), Sentences{});
    EXPECT_EQ(Check(path, Lines(100)), (Sentences{"src/" + path + ":100: the file has more than 99 lines"}));
  }
  EXPECT_EQ(Check("main/dispatch.cpp", Lines(100)), Sentences{});
}

TEST(RoomOf, IsTheDirectoryThatHasARule) {
  EXPECT_EQ(RoomOf("main/main.cpp"), "main");
  EXPECT_EQ(RoomOf("daemon/main/main.cpp"), "daemon/main");
  EXPECT_EQ(RoomOf("daemon/radio/simulated/simulated_driver.h"), "daemon/radio");
  EXPECT_EQ(RoomOf("client/records.h"), "client");
  EXPECT_EQ(RoomOf("clients/records.h"), "");
  EXPECT_EQ(RoomOf("daemon/a.h"), "");
  EXPECT_EQ(RoomOf("vector"), "");
}

}  // namespace

}  // namespace TALO::Contract
