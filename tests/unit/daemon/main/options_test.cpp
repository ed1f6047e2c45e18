#include "daemon/main/options.h"

#include "support/captured_stream.h"
#include "support/environment.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::CountryCode;
using Wifi::Util::LogLevel;
using Wifi::Util::SupportedModel;

using Words = std::vector<std::string>;

std::optional<Options> Parse(const Words& words) {
  std::vector<const char*> arguments = {"talowifid"};
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  return ParseOptions(static_cast<int>(arguments.size()), arguments.data());
}

/// What it throws, "none" when it does not.
std::string FailureOf(const Words& words) {
  try {
    Parse(words);
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return "none";
}

/// With a configuration file of the test's own, so that one on this machine has no say.
class DaemonOptions : public testing::Test {
 protected:
  DaemonOptions() { Configure(""); }

  void Configure(const std::string& text) const { WriteFile(path_, text); }

  Words WithFile(const Words& words) const {
    Words all = {"--config", path_};
    all.insert(all.end(), words.begin(), words.end());
    return all;
  }

  Options ParseWithFile(const Words& words = {}) const { return Parse(WithFile(words)).value(); }

  /// Expects what the configuration file is refused with.
  void ExpectFileRefused(const std::string& text, const std::string& failure) const {
    Configure(text);
    EXPECT_EQ(FailureOf(WithFile({})), failure);
  }

  EnvironmentVariable noStateDirectory_{"STATE_DIRECTORY", std::nullopt};
  TemporaryDirectory directory_;
  const std::string path_ = directory_ / "talowifid.conf";
};

TEST_F(DaemonOptions, HaveDefaults) {
  const Options options = ParseWithFile();
  EXPECT_EQ(options.radioDriver, Options::RadioDriver::Simulated);
  EXPECT_EQ(options.model, SupportedModel::Alder100);
  EXPECT_EQ(options.country, CountryCode::DE);
  EXPECT_EQ(options.bus, Options::Bus::System);
  EXPECT_EQ(options.stateDirectory, "/var/lib/talowifi");
  EXPECT_EQ(options.scenario, "");
  EXPECT_EQ(options.radios, "");
  EXPECT_EQ(options.hostapd, "/usr/sbin/hostapd");
  EXPECT_EQ(options.supplicant, "/usr/sbin/wpa_supplicant");
  EXPECT_EQ(options.runtimeDirectory, "/run/talowifi");
  EXPECT_EQ(options.bridge, "br0");
  EXPECT_EQ(options.accessGroup, "netdev");
  EXPECT_EQ(options.logLevel, LogLevel::Information);
}

TEST_F(DaemonOptions, ComeFromTheCommandLine) {
  const Options options =
      ParseWithFile({"--radio-driver", "simulated", "--model", "Dune40", "--country=US", "--bus", "session",
                     "--state-dir", "/tmp/state", "--scenario", "home.json", "--bridge=br-lan",
                     "--access-group", "wheel", "--log-level", "Debug"});
  EXPECT_EQ(options.radioDriver, Options::RadioDriver::Simulated);
  EXPECT_EQ(options.model, SupportedModel::Dune40);
  EXPECT_EQ(options.country, CountryCode::US);
  EXPECT_EQ(options.bus, Options::Bus::Session);
  EXPECT_EQ(options.stateDirectory, "/tmp/state");
  EXPECT_EQ(options.scenario, "home.json");
  EXPECT_EQ(options.bridge, "br-lan");
  EXPECT_EQ(options.accessGroup, "wheel");
  EXPECT_EQ(options.logLevel, LogLevel::Debug);
}

TEST_F(DaemonOptions, ComeFromTheConfigurationFile) {
  Configure(
      "# A router with two radios.\n"
      "radio-driver = simulated\n"
      "model = Cedar300\n"
      "  country=FR\n"
      "\n"
      "bus = session\n"
      "state-dir = /srv/wifi state\n"
      "scenario = /srv/the home.json\n"
      "bridge = br-lan # of the house\n"
      "access-group = wifi users\n"
      "log-level = Error\n");
  const Options options = ParseWithFile();
  EXPECT_EQ(options.radioDriver, Options::RadioDriver::Simulated);
  EXPECT_EQ(options.model, SupportedModel::Cedar300);
  EXPECT_EQ(options.country, CountryCode::FR);
  EXPECT_EQ(options.bus, Options::Bus::Session);
  EXPECT_EQ(options.stateDirectory, "/srv/wifi state");
  EXPECT_EQ(options.scenario, "/srv/the home.json");
  EXPECT_EQ(options.bridge, "br-lan");
  EXPECT_EQ(options.accessGroup, "wifi users");
  EXPECT_EQ(options.logLevel, LogLevel::Error);
}

TEST_F(DaemonOptions, TakeTheCommandLineBeforeTheFile) {
  Configure(
      "model = Cedar300\ncountry = FR\nbus = session\nstate-dir = /file\nscenario = /file.json\nbridge = "
      "br-file\n"
      "log-level = Error\n");
  const Options options =
      ParseWithFile({"--model", "Birch200", "--country", "US", "--bus", "system", "--state-dir", "/line",
                     "--scenario", "/line.json", "--bridge", "br-line", "--log-level", "Warning"});
  EXPECT_EQ(options.model, SupportedModel::Birch200);
  EXPECT_EQ(options.country, CountryCode::US);
  EXPECT_EQ(options.bus, Options::Bus::System);
  EXPECT_EQ(options.stateDirectory, "/line");
  EXPECT_EQ(options.scenario, "/line.json");
  EXPECT_EQ(options.bridge, "br-line");
  EXPECT_EQ(options.logLevel, LogLevel::Warning);
}

TEST_F(DaemonOptions, MixCommandLineFileAndDefaults) {
  Configure("country = FR\nmodel = Cedar300\n");
  const Options options = ParseWithFile({"--model", "Birch200"});
  EXPECT_EQ(options.model, SupportedModel::Birch200);
  EXPECT_EQ(options.country, CountryCode::FR);
  EXPECT_EQ(options.bridge, "br0");
}

TEST_F(DaemonOptions, KnowEveryModelAndLogLevel) {
  EXPECT_EQ(ParseWithFile({"--model", "Alder100"}).model, SupportedModel::Alder100);
  EXPECT_EQ(ParseWithFile({"--model", "Birch200"}).model, SupportedModel::Birch200);
  EXPECT_EQ(ParseWithFile({"--model", "Cedar300"}).model, SupportedModel::Cedar300);
  EXPECT_EQ(ParseWithFile({"--model", "Dune40"}).model, SupportedModel::Dune40);
  EXPECT_EQ(ParseWithFile({"--log-level", "Error"}).logLevel, LogLevel::Error);
  EXPECT_EQ(ParseWithFile({"--log-level", "Warning"}).logLevel, LogLevel::Warning);
  EXPECT_EQ(ParseWithFile({"--log-level", "Information"}).logLevel, LogLevel::Information);
  EXPECT_EQ(ParseWithFile({"--log-level", "Debug"}).logLevel, LogLevel::Debug);
}

TEST_F(DaemonOptions, TakeTheStateDirectoryThatSystemdMade) {
  const EnvironmentVariable made("STATE_DIRECTORY", "/var/lib/private/talowifi");
  EXPECT_EQ(ParseWithFile().stateDirectory, "/var/lib/private/talowifi");
  EXPECT_EQ(ParseWithFile({"--state-dir", "/line"}).stateDirectory, "/line");
  Configure("state-dir = /file\n");
  EXPECT_EQ(ParseWithFile().stateDirectory, "/file");
}

TEST_F(DaemonOptions, ChooseRealRadios) {
  const Options options =
      ParseWithFile({"--radio-driver", "linux", "--radios", "phy1=Band2_4GHz", "--hostapd", "/opt/hostapd",
                     "--wpa-supplicant", "/opt/wpa_supplicant"});
  EXPECT_EQ(options.radioDriver, Options::RadioDriver::Linux);
  EXPECT_EQ(options.radios, "phy1=Band2_4GHz");
  EXPECT_EQ(options.hostapd, "/opt/hostapd");
  EXPECT_EQ(options.supplicant, "/opt/wpa_supplicant");
  EXPECT_EQ(FailureOf(WithFile({"--radio-driver", "linux", "--scenario", "home.json"})),
            "the option scenario cannot be \"home.json\": the radio driver \"linux\" has no use for it");
}

TEST_F(DaemonOptions, TakeTheServiceManagersRuntimeDirectoryUnlessTheyNameOne) {
  const EnvironmentVariable made("RUNTIME_DIRECTORY", "/run/private/talowifi");
  EXPECT_EQ(ParseWithFile().runtimeDirectory, "/run/private/talowifi");
  EXPECT_EQ(ParseWithFile({"--runtime-dir", "/line"}).runtimeDirectory, "/line");
}

struct BadWord {
  const char* option;
  const char* word;
  const char* failure;
};

const std::vector<BadWord> kBadWords = {
    {"radio-driver", "windows",
     "the option radio-driver cannot be \"windows\": it is \"simulated\" or \"linux\""},
    {"radio-driver", "Simulated",
     "the option radio-driver cannot be \"Simulated\": it is \"simulated\" or \"linux\""},
    {"radios", "phy0=Band5GHz",
     "the option radios cannot be \"phy0=Band5GHz\": the radio driver \"simulated\" has no use for it"},
    {"model", "Dune", "the option model cannot be \"Dune\": there is no such name"},
    {"model", "dune40", "the option model cannot be \"dune40\": there is no such name"},
    {"model", "3", "the option model cannot be \"3\": there is no such name"},
    {"model", "Error", "the option model cannot be \"Error\": it is not a model"},
    {"country", "XX", "the option country cannot be \"XX\": there is no such name"},
    {"country", "de", "the option country cannot be \"de\": there is no such name"},
    {"country", "MaxCountryCode", "the option country cannot be \"MaxCountryCode\": it is not a country"},
    {"country", "D\xff", "the option country cannot be \"D\\xff\": there is no such name"},
    {"bus", "user", "the option bus cannot be \"user\": it is \"system\" or \"session\""},
    {"bus", "System", "the option bus cannot be \"System\": it is \"system\" or \"session\""},
    {"log-level", "debug", "the option log-level cannot be \"debug\": there is no such name"},
    {"log-level", "Notice", "the option log-level cannot be \"Notice\": there is no such name"},
};

TEST_F(DaemonOptions, RefuseABadWordOnTheCommandLine) {
  for (const BadWord& row : kBadWords) {
    EXPECT_EQ(FailureOf(WithFile({std::string("--") + row.option, row.word})), row.failure);
  }
}

TEST_F(DaemonOptions, RefuseABadWordInTheFile) {
  for (const BadWord& row : kBadWords) {
    ExpectFileRefused(std::string(row.option) + " = " + row.word + "\n", row.failure);
  }
}

TEST_F(DaemonOptions, RefuseWhatTheCommandLineDoesNotHave) {
  EXPECT_EQ(FailureOf(WithFile({"--channel", "6"})), "unrecognised option '--channel'");
  EXPECT_EQ(FailureOf(WithFile({"--model"})), "the required argument for option '--model' is missing");
  EXPECT_EQ(FailureOf(WithFile({"--model", "Dune40", "--model", "Dune40"})),
            "option '--model' cannot be specified more than once");
}

TEST_F(DaemonOptions, RefuseAWordThatBelongsToNoOption) {
  const std::string why = " on the command line belongs to no option";
  EXPECT_EQ(FailureOf(WithFile({"Dune40"})), "the word \"Dune40\"" + why);
  EXPECT_EQ(FailureOf(WithFile({"--model", "Dune40", "now", "then"})), "the word \"now\"" + why);
  EXPECT_EQ(FailureOf(WithFile({"now", "--model", "Dune40"})), "the word \"now\"" + why);
  EXPECT_EQ(FailureOf(WithFile({"--", "--help"})), "the word \"--help\"" + why);
  EXPECT_EQ(FailureOf(WithFile({"two\nlines"})), "the word \"two\\x0alines\"" + why);
  EXPECT_EQ(FailureOf(WithFile({""})), "the word \"\"" + why);
  EXPECT_EQ(FailureOf(WithFile({"--help", "me"})), "the word \"me\"" + why);
}

TEST_F(DaemonOptions, RefuseWhatTheFileDoesNotHave) {
  const std::string start = "the configuration file " + path_ + " cannot be used: ";
  ExpectFileRefused("channel = 6\n", start + "unrecognised option 'channel'");
  ExpectFileRefused("Model = Dune40\n", start + "unrecognised option 'Model'");
  ExpectFileRefused("help = 1\n", start + "unrecognised option 'help'");
  ExpectFileRefused("config = other\n", start + "unrecognised option 'config'");
  ExpectFileRefused("[radio]\nmodel = Dune40\n", start + "unrecognised option 'radio.model'");
  ExpectFileRefused("model\n", start + "the options configuration file contains an invalid line 'model'");
  ExpectFileRefused("model = Dune40\nmodel = Dune40\n",
                    start + "option 'model' cannot be specified more than once");
}

TEST_F(DaemonOptions, RefuseWhatIsAPlaceholderOfTheSentence) {
  const std::string start = "the configuration file " + path_ + " cannot be used: ";
  ExpectFileRefused("%canonical_option% = 6\n", start + "unrecognised option '%canonical_option%'");
  ExpectFileRefused("%invalid_line%\n",
                    start + "the options configuration file contains an invalid line '%invalid_line%'");
  EXPECT_EQ(FailureOf(WithFile({"--%canonical_option%"})), "unrecognised option '--%canonical_option%'");
}

TEST_F(DaemonOptions, KeepPercentSignsInValues) {
  Configure("bridge = %value%\n");
  EXPECT_EQ(ParseWithFile().bridge, "%value%");
}

TEST_F(DaemonOptions, RefuseAFileThatCannotBeRead) {
  const std::string missing = directory_ / "missing.conf";
  EXPECT_EQ(FailureOf({"--config", missing}), "the configuration file " + missing + " cannot be read");
  const std::string noFile = directory_ / "";
  EXPECT_EQ(FailureOf({"--config", noFile}), "the configuration file " + noFile + " cannot be read");
}

TEST_F(DaemonOptions, PrintTheHelpAndDoNothingElse) {
  const std::string help =
      "Usage: talowifid [OPTION...]:\n"
      "  --help                                print this help\n"
      "  --config FILE (=/etc/talowifi/talowifid.conf)\n"
      "                                        configuration file; this one need not \n"
      "                                        exist\n"
      "\n"
      "Options, on the command line or as key = value in the configuration file:\n"
      "  --radio-driver simulated|linux (=simulated)\n"
      "                                        which radios to run on\n"
      "  --model MODEL (=Alder100)             router model: Alder100, Birch200, \n"
      "                                        Cedar300 or Dune40\n"
      "  --country CODE (=DE)                  country code of a router that was never\n"
      "                                        set up\n"
      "  --bus system|session (=system)        which bus to serve\n"
      "  --state-dir DIR (=/var/lib/talowifi)  where the state is kept\n"
      "  --scenario FILE                       what the simulated radios hear; silence\n"
      "                                        without one\n"
      "  --radios MAP                          phys of the radios, as in phy0=Band5GHz\n"
      "  --hostapd PROGRAM (=/usr/sbin/hostapd)\n"
      "                                        program for access points\n"
      "  --wpa-supplicant PROGRAM (=/usr/sbin/wpa_supplicant)\n"
      "                                        program for stations\n"
      "  --runtime-dir DIR (=/run/talowifi)    where those find their files\n"
      "  --bridge NAME (=br0)                  bridge of new networks\n"
      "  --access-group GROUP (=netdev)        whose members may use the wifi daemon\n"
      "  --log-level LEVEL (=Information)      Error, Warning, Information or Debug\n";
  for (const Words& words : {Words{"--help"}, Words{"--help", "--model", "Nothing"},
                             Words{"--config", "/missing.conf", "--help"}}) {
    const CapturedStream output(std::cout);
    EXPECT_EQ(Parse(words).has_value(), false);
    EXPECT_EQ(output.Text(), help);
  }
}

}  // namespace

}  // namespace TALO::Wifid
