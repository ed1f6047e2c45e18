#pragma once

#include "cli/command_table.h"
#include "client/mac_filter_records.h"

#include <boost/program_options/options_description.hpp>
#include <boost/program_options/variables_map.hpp>

#include <string>
#include <vector>

/// The frame that every handler runs in: publish the usage, declare options on it, parse, read.
namespace TALO::Tool {

/// Makes the usage object with the command's caption and leaves it in `usage` at once, so that the entry
/// point can print it whatever fails later. The handler declares its options on the result.
boost::program_options::options_description& publishUsage(Usage& usage, const char* caption);

/// The values that `subargs` give to the declared options. Unknown options and bad values are refused with
/// the option library's own errors; words that belong to no option are ignored. Nothing is enforced as
/// required: an option that was not given throws boost::bad_any_cast when it is read with as<T>().
boost::program_options::variables_map parseArguments(
    const std::vector<std::string>& subargs, const boost::program_options::options_description& options);

/// Pairs of a device name and MAC address text. Throws std::invalid_argument for an odd number of tokens, and
/// what MACAddress throws for a bad address.
std::vector<Wifi::MACFilterDevice> parseDevicesList(const std::vector<std::string>& tokens);

}  // namespace TALO::Tool
