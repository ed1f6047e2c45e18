#include "contract/include_graph.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>

namespace TALO::Contract {

namespace {

using Names = std::set<std::string>;

/// Every room with those that it may include beside itself.
const std::map<std::string, Names> kRooms = {
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

/// A library of others: how its headers begin, and the rooms and files that may include them.
struct Library {
  std::string start;
  std::string name;
  Names rooms;
  Names files;
};

const std::vector<Library> kLibraries = {
    {"systemd/", "sd-bus and sd-event", {"bus", "daemon/service", "daemon/main", "daemon/system"}, {}},
    {"boost/",
     "Boost",
     {"cli", "commands", "main", "daemon/main", "reference"},
     {"client/record_descriptions.h", "client/record_members.h", "daemon/model/state_description.h",
      "daemon/radio/simulated/scenario_description.h", "daemon/store/checksum.cpp"}},
    {"netlink/", "libnl", {"daemon/system"}, {}},
    {"linux/nl80211", "nl80211", {"daemon/system"}, {}},
    {"json/", "jsoncpp", {"client", "commands", "daemon/json"}, {}},
    {"magic_enum", "magic_enum", {"values"}, {}},
};

constexpr std::size_t kMaximumLines = 400;
constexpr std::size_t kMaximumMainLines = 99;
const Names kMainFiles = {"main/main.cpp", "daemon/main/main.cpp"};

struct Include {
  std::string header;
  bool quoted;
};

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t");
  return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

/// The include on this line, where there is one.
std::optional<Include> ReadInclude(std::string_view line) {
  line = WithoutBlanks(line);
  if (!line.starts_with('#')) {
    return std::nullopt;
  }
  line = WithoutBlanks(line.substr(1));
  constexpr std::string_view kWord = "include";
  if (!line.starts_with(kWord)) {
    return std::nullopt;
  }
  line = WithoutBlanks(line.substr(kWord.size()));
  if (line.empty() || (line.front() != '"' && line.front() != '<')) {
    return std::nullopt;
  }
  const bool quoted = line.front() == '"';
  const std::size_t end = line.find(quoted ? '"' : '>', 1);
  if (end == std::string_view::npos) {
    return std::nullopt;
  }
  return Include{std::string(line.substr(1, end - 1)), quoted};
}

/// Why a file may not include this, empty where it may.
std::string WhyNot(const std::string& path, const Include& include) {
  // A library's header is one however it is written.
  for (const Library& library : kLibraries) {
    if (include.header.starts_with(library.start)) {
      const bool allowed = library.rooms.contains(RoomOf(path)) || library.files.contains(path);
      return allowed ? "" : library.name + " has no place here";
    }
  }
  const std::string from = RoomOf(path);
  const std::string to = RoomOf(include.header);
  if (to.empty()) {
    return include.quoted ? "it is in no room" : "";
  }
  if (from != to && (from.empty() || !kRooms.at(from).contains(to))) {
    return (from.empty() ? "no room" : from) + " may not include " + to;
  }
  return "";
}

}  // namespace

std::string RoomOf(const std::string& path) {
  for (const auto& [room, unused] : kRooms) {
    if (path.starts_with(room + "/")) {
      return room;
    }
  }
  return "";
}

std::vector<std::string> FindViolations(const std::vector<SourceFile>& files) {
  std::vector<std::string> violations;
  for (const SourceFile& file : files) {
    std::istringstream text(file.text);
    std::size_t lines = 0;
    const auto report = [&](const std::string& what) {
      violations.push_back("src/" + file.path + ":" + std::to_string(lines) + ": " + what);
    };
    for (std::string line; std::getline(text, line);) {
      ++lines;
      if (const auto include = ReadInclude(line)) {
        if (const std::string why = WhyNot(file.path, *include); !why.empty()) {
          report("\"" + include->header + "\" is not allowed: " + why);
        }
      }
    }
    const std::size_t most = kMainFiles.contains(file.path) ? kMaximumMainLines : kMaximumLines;
    if (lines > most) {
      report("the file has more than " + std::to_string(most) + " lines");
    }
    if (RoomOf(file.path).empty()) {
      report("the file is in no room");
    }
  }
  return violations;
}

}  // namespace TALO::Contract
