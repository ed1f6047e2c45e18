#pragma once

#include <boost/program_options/options_description.hpp>

#include <string>

namespace TALO::Reference {

/// A page of the daemon, from its source. There @option NAME is replaced by the option as it stands on the
/// command line, @key NAME as it stands in the configuration file, each with its description and its default;
/// the source goes on with what more there is to say. A page has all of `options` in their order. Throws
/// SourceError where one is missing, or there is no such option.
std::string DaemonPage(const std::string& source, const boost::program_options::options_description& options);

}  // namespace TALO::Reference
