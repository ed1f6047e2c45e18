#include "reference/completion.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <map>

namespace TALO::Reference {

namespace {

using Words = std::vector<std::string>;

/// What makes the lines that take the place of one that begins with "@".
using Makers = std::map<std::string, std::function<std::string()>>;

std::string Fill(const std::string& source, const Makers& makers) {
  std::string script;
  for (const Piece& piece : ReadPieces(source)) {
    if (!piece.word.empty()) {
      const auto maker = makers.find(piece.word);
      if (maker == makers.end()) {
        throw SourceError(piece, "@" + piece.word + " has no place here");
      }
      script += maker->second();
    }
    script += piece.text;
  }
  return script;
}

std::string Lower(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string Join(const Words& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

/// One word of either shell, whatever it holds.
std::string Quote(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return quoted + "'";
}

/// A name with its description, as zsh shows them.
std::string Described(const std::string& name, const std::string& sentence) {
  return Quote(name + ":" + sentence);
}

std::string Dashed(const OptionReference& option) { return "--" + option.name; }

Words ValuesOf(const OptionReference& option) {
  return option.kind == OptionReference::Kind::Boolean ? Words{"0", "1"} : option.words;
}

Words ListsOf(const CommandReference& command) {
  Words lists;
  for (const OptionReference& option : command.options) {
    if (option.isList) {
      lists.push_back(Dashed(option));
    }
  }
  return lists;
}

/// A line of a `case` for each command with options; `describe` says what it sets.
template <typename Describe>
std::string OptionLines(const ToolProse& prose, Describe describe) {
  std::string lines;
  for (const CommandProse& command : prose.commands) {
    if (!command.command.options.empty()) {
      lines += "        " + Lower(command.command.name) + ") " + describe(command) + " ;;\n";
    }
  }
  return lines;
}

/// A line of a `case` for each option with names for values; `assign` sets these.
std::string ValueLines(const ToolProse& prose, const std::function<std::string(const Words&)>& assign) {
  std::string lines;
  for (const CommandProse& command : prose.commands) {
    for (const OptionReference& option : command.command.options) {
      if (const Words values = ValuesOf(option); !values.empty()) {
        const std::string pattern = Quote(Join({Lower(command.command.name), Dashed(option)}));
        lines += Join({"       ", pattern + ")", assign(values), ";;\n"});
      }
    }
  }
  return lines;
}

std::string BashValues(const Words& values) { return "values=" + Quote(Join(values)); }
std::string ZshValues(const Words& values) { return "values=(" + Join(values) + ")"; }

std::string BashOptions(const CommandProse& prose) {
  Words options;
  std::ranges::transform(prose.command.options, std::back_inserter(options), Dashed);
  const Words lists = ListsOf(prose.command);
  return "options=" + Quote(Join(options)) + (lists.empty() ? "" : " lists=" + Quote(Join(lists)));
}

std::string ZshOptions(const CommandProse& prose) {
  Words options;
  std::ranges::transform(prose.options, std::back_inserter(options),
                         [](const Piece& option) { return Described("--" + option.name, option.sentence); });
  const Words lists = ListsOf(prose.command);
  return "option_specs=(" + Join(options) + ")" + (lists.empty() ? "" : " lists=(" + Join(lists) + ")");
}

std::string CommandLines(const ToolProse& prose,
                         const std::function<std::string(const CommandProse&)>& line) {
  std::string lines;
  for (const CommandProse& command : prose.commands) {
    lines += line(command) + "\n";
  }
  return lines;
}

}  // namespace

std::string BashCompletion(const std::string& source, const ToolProse& prose) {
  return Fill(
      source,
      {{"commands",
        [&] { return CommandLines(prose, [](const auto& command) { return command.command.name; }); }},
       {"options", [&] { return OptionLines(prose, BashOptions); }},
       {"values", [&] { return ValueLines(prose, BashValues); }}});
}

std::string ZshCompletion(const std::string& source, const ToolProse& prose) {
  return Fill(source, {{"commands",
                        [&] {
                          return CommandLines(prose, [](const auto& command) {
                            return "    " + Described(command.command.name, command.purpose.sentence);
                          });
                        }},
                       {"options", [&] { return OptionLines(prose, ZshOptions); }},
                       {"values", [&] { return ValueLines(prose, ZshValues); }}});
}

}  // namespace TALO::Reference
