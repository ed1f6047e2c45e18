#include "daemon/main/options.h"

#include "cli/parsed_words.h"
#include "daemon/model/text.h"
#include "values/enum_names.h"

#include <boost/program_options/parsers.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <boost/program_options/variables_map.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace TALO::Wifid {

namespace po = boost::program_options;
using Words = std::vector<std::string>;

namespace {

constexpr const char* kDefaultConfigFile = "/etc/talowifi/talowifid.conf";

[[noreturn]] void Refuse(const std::string& option, const std::string& value, const std::string& why) {
  throw std::invalid_argument("the option " + option + " cannot be " + Quoted(value) + ": " + why);
}

template <typename E>
E ReadEnum(const po::variables_map& values, const char* option) {
  const auto word = values[option].as<std::string>();
  try {
    return Wifi::Util::EnumFromName<E>(word);
  } catch (const std::exception&) {
    Refuse(option, word, "there is no such name");
  }
}

Options::Bus ReadBus(const po::variables_map& values) {
  const std::string word = values["bus"].as<std::string>();
  if (word == "session") {
    return Options::Bus::Session;
  }
  if (word != "system") {
    Refuse("bus", word, "it is \"system\" or \"session\"");
  }
  return Options::Bus::System;
}

/// What the command line says; a word that belongs to no option is refused.
po::parsed_options ParseWords(int argc, const char* const* argv, const po::options_description& options) {
  auto parsed = Tool::parseWords(
      Words(argv + std::min(argc, 1), argv + argc),
      [&options](const Words& words) { return po::command_line_parser(words).options(options).run(); });
  for (const auto& option : parsed.options) {
    if (option.position_key >= 0) {
      throw std::invalid_argument("the word " + Quoted(option.value.front()) +
                                  " on the command line belongs to no option");
    }
  }
  return parsed;
}

/// systemd names the directory that it made; the option goes before it.
std::string ReadDirectory(const po::variables_map& values, const char* option, const char* variable) {
  const char* made = std::getenv(variable);
  if (!values[option].defaulted() || made == nullptr) {
    return values[option].as<std::string>();
  }
  // The first, where it made several.
  const std::string list = made;
  return list.substr(0, list.find(':'));
}

Options::RadioDriver ReadRadioDriver(const po::variables_map& values) {
  const auto word = values["radio-driver"].as<std::string>();
  if (word == "linux") {
    return Options::RadioDriver::Linux;
  }
  if (word != "simulated") {
    Refuse("radio-driver", word, "it is \"simulated\" or \"linux\"");
  }
  return Options::RadioDriver::Simulated;
}

/// The word of an option that belongs to one driver; empty without it.
std::string ReadForDriver(const po::variables_map& values, const char* option, bool isForThisDriver) {
  if (values.count(option) == 0) {
    return {};
  }
  auto word = values[option].as<std::string>();
  if (!isForThisDriver) {
    Refuse(option, word,
           "the radio driver " + Quoted(values["radio-driver"].as<std::string>()) + " has no use for it");
  }
  return word;
}

void ReadConfigFile(po::variables_map& values, const po::options_description& options) {
  const auto path = values["config"].as<std::string>();
  errno = 0;
  std::ifstream file(path);
  if (!file) {
    if (!values["config"].defaulted() || errno != ENOENT) {
      throw std::invalid_argument("the configuration file " + path + " cannot be read");
    }
    return;
  }
  std::string text;
  for (std::string line; std::getline(file, line);) {
    text += line + "\n";
  }
  try {
    const auto parse = [&options](const Words& texts) {
      std::istringstream stream(texts.front());
      return po::parse_config_file(stream, options);
    };
    po::store(Tool::parseWords({text}, parse), values);
  } catch (const po::error& error) {
    throw std::invalid_argument("the configuration file " + path + " cannot be used: " + error.what());
  }
  // A directory opens like a file and reads like an empty one.
  if (file.bad()) {
    throw std::invalid_argument("the configuration file " + path + " cannot be read");
  }
}

}  // namespace

po::options_description ConfigOptions() {
  const Options fallback;
  po::options_description options("Options, on the command line or as key = value in the configuration file");
  const auto word = [](const char* placeholder) { return po::value<std::string>()->value_name(placeholder); };
  const auto named = [&](const char* placeholder, const auto& value) {
    return word(placeholder)->default_value(Wifi::Util::EnumNameOf(value));
  };
  options.add_options()("radio-driver", word("simulated|linux")->default_value("simulated"),
                        "which radios to run on")("model", named("MODEL", fallback.model),
                                                  "router model: Alder100, Birch200, Cedar300 or Dune40")(
      "country", named("CODE", fallback.country), "country code of a router that was never set up")(
      "bus", word("system|session")->default_value("system"), "which bus to serve")(
      "state-dir", word("DIR")->default_value(fallback.stateDirectory), "where the state is kept")(
      "scenario", word("FILE"), "what the simulated radios hear; silence without one")(
      "radios", word("MAP"), "phys of the radios, as in phy0=Band5GHz")(
      "hostapd", word("PROGRAM")->default_value(fallback.hostapd), "program for access points")(
      "wpa-supplicant", word("PROGRAM")->default_value(fallback.supplicant), "program for stations")(
      "runtime-dir", word("DIR")->default_value(fallback.runtimeDirectory), "where those find their files")(
      "bridge", word("NAME")->default_value(fallback.bridge), "bridge of new networks")(
      "access-group", word("GROUP")->default_value(fallback.accessGroup),
      "whose members may use the wifi daemon")("log-level", named("LEVEL", fallback.logLevel),
                                               "Error, Warning, Information or Debug");
  return options;
}

po::options_description AllOptions() {
  po::options_description options("Usage: talowifid [OPTION...]");
  options.add_options()("help", "print this help")(
      "config", po::value<std::string>()->value_name("FILE")->default_value(kDefaultConfigFile),
      "configuration file; this one need not exist");
  options.add(ConfigOptions());
  return options;
}

std::optional<Options> ParseOptions(int argc, const char* const* argv) {
  const po::options_description options = AllOptions();
  po::variables_map values;
  po::store(ParseWords(argc, argv, options), values);
  if (values.count("help") != 0) {
    std::cout << options;
    return std::nullopt;
  }
  ReadConfigFile(values, ConfigOptions());

  Options result;
  result.radioDriver = ReadRadioDriver(values);
  const bool isSimulated = result.radioDriver == Options::RadioDriver::Simulated;
  result.model = ReadEnum<Wifi::Util::SupportedModel>(values, "model");
  if (result.model == Wifi::Util::SupportedModel::Error) {
    Refuse("model", "Error", "it is not a model");
  }
  result.country = ReadEnum<Wifi::CountryCode>(values, "country");
  if (result.country == Wifi::CountryCode::MaxCountryCode) {
    Refuse("country", "MaxCountryCode", "it is not a country");
  }
  result.bus = ReadBus(values);
  result.stateDirectory = ReadDirectory(values, "state-dir", "STATE_DIRECTORY");
  result.scenario = ReadForDriver(values, "scenario", isSimulated);
  result.radios = ReadForDriver(values, "radios", !isSimulated);
  result.hostapd = values["hostapd"].as<std::string>();
  result.supplicant = values["wpa-supplicant"].as<std::string>();
  result.runtimeDirectory = ReadDirectory(values, "runtime-dir", "RUNTIME_DIRECTORY");
  result.bridge = values["bridge"].as<std::string>();
  result.accessGroup = values["access-group"].as<std::string>();
  result.logLevel = ReadEnum<Wifi::Util::LogLevel>(values, "log-level");
  return result;
}

}  // namespace TALO::Wifid
