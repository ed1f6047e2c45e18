// packaging/talowifid.conf shows every option with its default.

#include "daemon/main/options.h"
#include "support/captured_stream.h"
#include "support/environment.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <iostream>
#include <regex>
#include <set>

namespace TALO::Wifid {

namespace {

const std::string kShipped = std::string(TALOWIFI_SOURCE_DIR) + "/packaging/talowifid.conf";

std::set<std::string> Names(const std::string& text, const std::string& pattern) {
  const std::regex name(pattern);
  std::set<std::string> names;
  for (std::sregex_iterator match(text.begin(), text.end(), name), end; match != end; ++match) {
    names.insert((*match)[1]);
  }
  return names;
}

/// What the daemon is set up to by a configuration file of this text alone.
Options OptionsFrom(const std::string& text) {
  const EnvironmentVariable noDirectory("STATE_DIRECTORY", std::nullopt);
  const TemporaryDirectory directory;
  const std::string path = directory / "talowifid.conf";
  WriteFile(path, text);
  const char* words[] = {"talowifid", "--config", path.c_str()};
  return ParseOptions(3, words).value();
}

void ExpectDefaults(const Options& options) {
  const Options defaults;
  EXPECT_EQ(options.radioDriver, defaults.radioDriver);
  EXPECT_EQ(options.model, defaults.model);
  EXPECT_EQ(options.country, defaults.country);
  EXPECT_EQ(options.bus, defaults.bus);
  EXPECT_EQ(options.stateDirectory, defaults.stateDirectory);
  EXPECT_EQ(options.bridge, defaults.bridge);
  EXPECT_EQ(options.logLevel, defaults.logLevel);
}

TEST(ShippedConfiguration, ChangesNothing) {
  const Options options = OptionsFrom(ReadFile(kShipped));
  ExpectDefaults(options);
  EXPECT_EQ(options.scenario, "");
}

TEST(ShippedConfiguration, ShowsTheDefaults) {
  // All but what simulated radios have no use for.
  const Options options =
      OptionsFrom(std::regex_replace(ReadFile(kShipped), std::regex("#(?!radios)([a-z-]+ = )"), "$1"));
  ExpectDefaults(options);
  EXPECT_EQ(options.scenario, "/usr/share/talowifi/scenarios/home-router.json");
}

TEST(ShippedConfiguration, ShowsEveryOption) {
  const CapturedStream help(std::cout);
  const char* words[] = {"talowifid", "--help"};
  EXPECT_FALSE(ParseOptions(2, words));
  auto options = Names(help.Text(), "--([a-z-]+)");
  EXPECT_EQ(options.erase("help") + options.erase("config"), 2U);
  EXPECT_EQ(Names(ReadFile(kShipped), "\n#([a-z-]+) = "), options);
}

}  // namespace

}  // namespace TALO::Wifid
