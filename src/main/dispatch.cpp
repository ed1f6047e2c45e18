#include "main/dispatch.h"

#include "cli/command_table.h"
#include "cli/help_listing.h"
#include "client/log_level_helper.h"
#include "commands/commands.h"
#include "values/errors.h"

#include <boost/any.hpp>
#include <boost/program_options/options_description.hpp>
#include <boost/program_options/parsers.hpp>
#include <boost/program_options/positional_options.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <boost/program_options/variables_map.hpp>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr const char* kUnexpected = "Unexpected error occurred, should be fixed.";

/// What the process arguments say.
struct Invocation {
  std::string command;
  std::vector<std::string> subargs;
};

/// Throws boost::bad_any_cast when no command is given, and the option library's errors.
Invocation parseInvocation(int argc, const char* const* argv) {
  const unsigned lineLength = po::options_description::m_default_line_length;
  po::options_description options("Usage: help", lineLength, lineLength / 2);
  options.add_options()("help", "print help message")("command", po::value<std::string>(),
                                                      "command to execute")(
      "subargs", po::value<std::vector<std::string>>(), "arguments for command e.g.");
  po::positional_options_description positional;
  positional.add("command", 1).add("subargs", -1);

  const po::parsed_options parsed =
      po::command_line_parser(argc, argv).options(options).positional(positional).allow_unregistered().run();
  po::variables_map values;
  po::store(parsed, values);
  po::notify(values);

  Invocation invocation{values["command"].as<std::string>(),
                        po::collect_unrecognized(parsed.options, po::include_positional)};
  // The first is taken to be the command word, also where that came by --command. Scripts rely on either
  // form.
  if (!invocation.subargs.empty()) {
    invocation.subargs.erase(invocation.subargs.begin());
  }
  return invocation;
}

int runHandler(const Command& command, const std::vector<std::string>& subargs) {
  Usage usage;
  try {
    command.handler(subargs, usage);
    return kSuccess;
  } catch (const Wifi::WifiException& refusal) {
    std::cout << "Failed to execute command: " << refusal.what() << std::endl;
  } catch (const boost::bad_any_cast&) {
    // The handler read an option that was not given.
    if (usage) {
      std::cout << *usage << std::endl;
    } else {
      std::cout << kUnexpected << std::endl;
    }
  } catch (const std::exception& failure) {
    std::cout << failure.what() << std::endl;
  }
  return kFailure;
}

int runInvocation(const CommandTable& table, int argc, const char* const* argv) {
  try {
    const Invocation invocation = parseInvocation(argc, argv);
    const Command& command = findCommand(table, invocation.command);
    if (command.debugOnly && !Wifi::Daemon::LogLevelHelper::IsDebugLogLevel()) {
      std::cout << invocation.command << " is supported only on debug mode." << std::endl;
      return kFailure;
    }
    return runHandler(command, invocation.subargs);
  } catch (const boost::bad_any_cast&) {
    printHelp(table);
  } catch (const std::exception& failure) {
    std::cout << failure.what() << std::endl;
    printHelp(table);
  } catch (...) {
    std::cout << kUnexpected << std::endl;
  }
  return kFailure;
}

}  // namespace

int dispatch(int argc, const char* const* argv) {
  CommandTable table;
  fillCommandTable(table);
  const int status = runInvocation(table, argc, argv);
  // An answer that did not reach its reader is a failure, whatever the daemon did.
  std::cout.flush();
  return std::cout.good() ? status : kFailure;
}

}  // namespace TALO::Tool
