#include "reference/command_reference.h"

#include "cli/command_table.h"
#include "cli/enum_words.h"
#include "commands/commands.h"

#include <boost/any.hpp>
#include <boost/program_options/options_description.hpp>
#include <boost/program_options/value_semantic.hpp>

#include <exception>
#include <stdexcept>
#include <typeinfo>

namespace TALO::Reference {

namespace po = boost::program_options;

namespace {

using Words = std::vector<std::string>;

OptionReference ReadOption(const po::option_description& option) {
  const auto semantic = option.semantic();
  const auto* typed = dynamic_cast<const po::typed_value_base*>(semantic.get());
  if (typed == nullptr) {
    throw std::logic_error("the option " + option.long_name() + " takes no value");
  }
  OptionReference reference{.name = option.long_name()};
  if (typed->value_type() == typeid(bool)) {
    reference.kind = OptionReference::Kind::Boolean;
  } else if (typed->value_type() == typeid(int)) {
    reference.kind = OptionReference::Kind::Integer;
  } else if (typed->value_type() != typeid(std::string) && typed->value_type() != typeid(Words)) {
    throw std::logic_error("the option " + option.long_name() + " is of a kind that has no words");
  }
  reference.isList = semantic->max_tokens() > 1;
  boost::any unused;
  reference.isOptional = semantic->apply_default(unused);
  if (const auto* words = dynamic_cast<const Tool::EnumWords*>(semantic.get())) {
    reference.words = words->Get();
  }
  return reference;
}

/// The usage object of the handler.
Tool::Usage Publish(const Tool::Command& command) {
  Tool::Usage usage;
  try {
    command.handler({}, usage);
  } catch (const std::exception&) {
    // What was missing does not matter: the usage stands before anything can fail.
  }
  if (!usage) {
    throw std::logic_error("the command " + command.name + " does not say how it is used");
  }
  return usage;
}

}  // namespace

std::vector<CommandReference> ReadCommands() {
  Tool::CommandTable table;
  Tool::fillCommandTable(table);
  std::vector<CommandReference> references;
  for (const Tool::Command& command : table) {
    CommandReference& reference = references.emplace_back();
    reference.name = command.name;
    reference.debugOnly = command.debugOnly;
    // It is the entry point's own, and lists instead of publishing.
    if (command.name == "help") {
      continue;
    }
    const Tool::Usage usage = Publish(command);
    for (const auto& option : usage->options()) {
      reference.options.push_back(ReadOption(*option));
    }
  }
  return references;
}

}  // namespace TALO::Reference
