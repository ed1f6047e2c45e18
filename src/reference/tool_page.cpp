#include "reference/tool_page.h"

#include "reference/roff.h"

#include <sstream>

namespace TALO::Reference {

namespace {

using Kind = OptionReference::Kind;

/// What stands for the option's value.
std::string Placeholder(const OptionReference& option) {
  if (option.kind == Kind::Boolean) {
    return Bold("0") + "|" + Bold("1");
  }
  return Italic(option.name) + (option.isList ? " ..." : "");
}

std::string OptionForm(const OptionReference& option) {
  return Bold("--" + option.name) + " " + Placeholder(option);
}

std::string Synopsis(const CommandReference& command) {
  std::string line = Bold("talowifitool " + command.name);
  for (const OptionReference& option : command.options) {
    const std::string form = OptionForm(option);
    line += " " + (option.isOptional ? "[" + form + "]" : form);
  }
  return line;
}

/// What the declaration says of the values, a sentence a line.
std::string ValueSentences(const OptionReference& option) {
  std::string sentence;
  for (const std::string& word : option.words) {
    sentence += (sentence.empty() ? "" : ", ") + Bold(word);
  }
  if (!sentence.empty()) {
    sentence = (option.isList ? "Any of " : "One of ") + sentence + ".";
  } else if (option.kind == Kind::Integer) {
    sentence = "A whole number.";
  }
  if (option.isOptional) {
    sentence += std::string(sentence.empty() ? "" : "\n") + "May be left out.";
  }
  return sentence;
}

/// A paragraph that hangs under its tag.
std::string Hanging(const std::string& tag, const std::string& text) { return ".TP\n" + tag + "\n" + text; }

std::string OptionParagraph(const OptionReference& option, const Piece& prose) {
  const std::string values = ValueSentences(option);
  return Hanging(OptionForm(option),
                 Sentence(prose.sentence) + "\n" + (values.empty() ? "" : values + "\n") + prose.text);
}

/// Lines as on a terminal; what is typed stands out.
std::string Example(const Piece& example) {
  std::string roff = ".PP\n.RS 4\n.EX\n";
  std::istringstream lines(example.text);
  for (std::string line; std::getline(lines, line);) {
    roff += (line.starts_with("$ ") ? "$ " + Bold(line.substr(2)) : Escape(line)) + "\n";
  }
  return roff + ".EE\n.RE\n";
}

std::string CommandSection(const CommandProse& prose) {
  std::string roff = Macro("SS", Escape(prose.command.name)) + Synopsis(prose.command) + "\n.PP\n" +
                     Sentence(prose.purpose.sentence) + "\n" + prose.purpose.text;
  if (prose.command.debugOnly) {
    roff += "Runs only while the daemon logs at debug level.\n";
  }
  for (std::size_t i = 0; i < prose.options.size(); ++i) {
    roff += OptionParagraph(prose.command.options[i], prose.options[i]);
  }
  roff += Hanging(Italic("Prints"), prose.prints.text);
  for (const Piece& refused : prose.refusals) {
    roff += Hanging(Italic("Refused"), refused.text);
  }
  for (const Piece& example : prose.examples) {
    roff += Example(example);
  }
  return roff;
}

}  // namespace

std::string ToolPage(const ToolProse& prose) {
  std::string roff = prose.before;
  for (const CommandProse& command : prose.commands) {
    roff += CommandSection(command);
  }
  return roff + prose.after;
}

}  // namespace TALO::Reference
