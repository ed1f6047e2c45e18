#include "reference/roff.h"

#include <cctype>

namespace TALO::Reference {

namespace {

/// What stands for a character that roff would read as something else or show as another.
std::string_view EscapeOf(char c) {
  switch (c) {
    case '\\':
      return "\\e";
    case '-':
      return "\\-";
    case '\'':
      return "\\(aq";
    case '`':
      return "\\(ga";
    case '^':
      return "\\(ha";
    case '~':
      return "\\(ti";
    case '"':
      return "\\(dq";
    default:
      return {};
  }
}

}  // namespace

std::string Escape(std::string_view text) {
  std::string escaped;
  // A dot at the start of a line begins a macro; an apostrophe would too.
  if (text.starts_with('.')) {
    escaped += "\\&";
  }
  for (const char c : text) {
    const std::string_view instead = EscapeOf(c);
    if (instead.empty()) {
      escaped += c;
    } else {
      escaped += instead;
    }
  }
  return escaped;
}

std::string Bold(std::string_view text) { return "\\fB" + Escape(text) + "\\fR"; }

std::string Italic(std::string_view text) { return "\\fI" + Escape(text) + "\\fR"; }

std::string Sentence(std::string_view phrase) {
  std::string sentence(phrase);
  if (!sentence.empty()) {
    sentence.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence.front())));
  }
  return Escape(sentence) + (sentence.ends_with('.') ? "" : ".");
}

std::string Macro(std::string_view name, std::string_view argument) {
  return "." + std::string(name) + " \"" + std::string(argument) + "\"\n";
}

}  // namespace TALO::Reference
