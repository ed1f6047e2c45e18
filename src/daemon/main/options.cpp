#include "daemon/main/options.h"

#include "daemon/model/text.h"
#include "values/enum_names.h"

#include <boost/program_options/options_description.hpp>
#include <boost/program_options/parsers.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <boost/program_options/variables_map.hpp>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace TALO::Wifid {

namespace po = boost::program_options;

namespace {

constexpr const char* kDefaultConfigFile = "/etc/talowifi/talowifid.conf";

po::options_description ConfigOptions() {
  po::options_description options("Options, on the command line or as key = value in the configuration file");
  const auto word = [](const char* placeholder) { return po::value<std::string>()->value_name(placeholder); };
  options.add_options()("radio-driver", word("simulated"), "which radios to run on")(
      "model", word("MODEL"), "router model: Alder100, Birch200, Cedar300 or Dune40")(
      "country", word("CODE"), "country code of a router that was never set up")(
      "bus", word("system|session"), "which bus to serve")("state-dir", word("DIR"),
                                                           "where the state is kept")(
      "scenario", word("FILE"), "what the simulated radios hear")("bridge", word("NAME"),
                                                                  "bridge of new networks")(
      "access-group", word("GROUP"), "whose members may use the wifi daemon, netdev by default")(
      "log-level", word("LEVEL"), "Error, Warning, Information or Debug");
  return options;
}

[[noreturn]] void Refuse(const std::string& option, const std::string& value, const std::string& why) {
  throw std::invalid_argument("the option " + option + " cannot be " + Quoted(value) + ": " + why);
}

template <typename E>
E ReadEnum(const po::variables_map& values, const char* option, E fallback) {
  if (values.count(option) == 0) {
    return fallback;
  }
  const auto word = values[option].as<std::string>();
  try {
    return Wifi::Util::EnumFromName<E>(word);
  } catch (const std::exception&) {
    Refuse(option, word, "there is no such name");
  }
}

std::string ReadText(const po::variables_map& values, const char* option, const std::string& fallback) {
  return values.count(option) == 0 ? fallback : values[option].as<std::string>();
}

Options::Bus ReadBus(const po::variables_map& values) {
  const std::string word = ReadText(values, "bus", "system");
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
  auto parsed = po::command_line_parser(argc, argv).options(options).run();
  for (const auto& option : parsed.options) {
    if (option.position_key >= 0) {
      throw std::invalid_argument("the word " + Quoted(option.value.front()) +
                                  " on the command line belongs to no option");
    }
  }
  return parsed;
}

/// systemd names the directory that it made; the option goes before it.
std::string DefaultStateDirectory() {
  const char* directory = std::getenv("STATE_DIRECTORY");
  return directory != nullptr ? directory : Options().stateDirectory;
}

void ReadConfigFile(po::variables_map& values, const po::options_description& options) {
  const bool named = values.count("config") != 0;
  const std::string path = named ? values["config"].as<std::string>() : kDefaultConfigFile;
  std::ifstream file(path);
  if (!file) {
    if (named) {
      throw std::invalid_argument("the configuration file " + path + " cannot be read");
    }
    return;
  }
  try {
    po::store(po::parse_config_file(file, options), values);
  } catch (const po::error& error) {
    throw std::invalid_argument("the configuration file " + path + " cannot be used: " + error.what());
  }
  // A directory opens like a file and reads like an empty one.
  if (file.bad()) {
    throw std::invalid_argument("the configuration file " + path + " cannot be read");
  }
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv) {
  const po::options_description configOptions = ConfigOptions();
  po::options_description options("Usage: talowifid [OPTION...]");
  options.add_options()("help", "print this help")(
      "config", po::value<std::string>()->value_name("FILE"),
      "configuration file, /etc/talowifi/talowifid.conf where it exists");
  options.add(configOptions);

  po::variables_map values;
  po::store(ParseWords(argc, argv, options), values);
  if (values.count("help") != 0) {
    std::cout << options;
    return std::nullopt;
  }
  ReadConfigFile(values, configOptions);

  Options result;
  result.radioDriver = ReadText(values, "radio-driver", result.radioDriver);
  if (result.radioDriver != "simulated") {
    Refuse("radio-driver", result.radioDriver, "this daemon has the driver \"simulated\" only");
  }
  result.model = ReadEnum(values, "model", result.model);
  if (result.model == Wifi::Util::SupportedModel::Error) {
    Refuse("model", "Error", "it is not a model");
  }
  result.country = ReadEnum(values, "country", result.country);
  if (result.country == Wifi::CountryCode::MaxCountryCode) {
    Refuse("country", "MaxCountryCode", "it is not a country");
  }
  result.bus = ReadBus(values);
  result.stateDirectory = ReadText(values, "state-dir", DefaultStateDirectory());
  result.scenario = ReadText(values, "scenario", result.scenario);
  result.bridge = ReadText(values, "bridge", result.bridge);
  result.accessGroup = ReadText(values, "access-group", result.accessGroup);
  result.logLevel = ReadEnum(values, "log-level", result.logLevel);
  return result;
}

}  // namespace TALO::Wifid
