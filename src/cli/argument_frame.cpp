#include "cli/argument_frame.h"

#include "cli/parsed_words.h"

#include <boost/program_options/parsers.hpp>

#include <cstddef>
#include <stdexcept>

namespace TALO::Tool {

namespace po = boost::program_options;

po::options_description& publishUsage(Usage& usage, const char* caption) {
  const unsigned lineLength = po::options_description::m_default_line_length;
  usage = std::make_shared<po::options_description>(caption, lineLength, lineLength / 2);
  return *usage;
}

po::variables_map parseArguments(const std::vector<std::string>& subargs,
                                 const po::options_description& options) {
  return parseWords(subargs, [&options](const std::vector<std::string>& words) {
    po::variables_map arguments;
    po::store(po::command_line_parser(words).options(options).run(), arguments);
    return arguments;
  });
}

std::vector<Wifi::MACFilterDevice> parseDevicesList(const std::vector<std::string>& tokens) {
  if (tokens.size() % 2 != 0) {
    throw std::invalid_argument("input of column devices is not correct.");
  }
  std::vector<Wifi::MACFilterDevice> devices;
  devices.reserve(tokens.size() / 2);
  for (std::size_t i = 0; i < tokens.size(); i += 2) {
    devices.push_back({tokens[i], Wifi::Util::MACAddress(tokens[i + 1])});
  }
  return devices;
}

}  // namespace TALO::Tool
