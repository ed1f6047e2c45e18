#pragma once

#include "values/enums.h"

#include <boost/program_options/options_description.hpp>

#include <optional>
#include <string>

namespace TALO::Wifid {

/// How the daemon is set up: the command line, then the configuration file, then these defaults.
struct Options {
  enum class Bus { System, Session };
  enum class RadioDriver { Simulated, Linux };

  RadioDriver radioDriver = RadioDriver::Simulated;
  Wifi::Util::SupportedModel model = Wifi::Util::SupportedModel::Alder100;
  Wifi::CountryCode country = Wifi::CountryCode::DE;
  Bus bus = Bus::System;
  std::string stateDirectory = "/var/lib/talowifi";
  std::string scenario;  ///< file of what the simulated radios hear; empty for silence
  std::string radios;    ///< which phy carries which radio; empty for by band
  std::string hostapd = "/usr/sbin/hostapd";
  std::string supplicant = "/usr/sbin/wpa_supplicant";
  std::string runtimeDirectory = "/run/talowifi";  ///< where those find their files
  std::string bridge = "br0";
  std::string accessGroup = "netdev";  ///< whose members may call, beside root and the daemon's own user
  Wifi::Util::LogLevel logLevel = Wifi::Util::LogLevel::Information;
};

/// The keys of the configuration file, each an option of the command line too, with their defaults.
boost::program_options::options_description ConfigOptions();

/// Those, and the options of the command line alone.
boost::program_options::options_description AllOptions();

/// Nothing when only the help was asked for; it has been printed then. Throws std::exception with a sentence
/// that names the option and the value for anything that cannot be used.
std::optional<Options> ParseOptions(int argc, const char* const* argv);

}  // namespace TALO::Wifid
