#include "reference/daemon_page.h"

#include "reference/page_source.h"
#include "reference/roff.h"

#include <boost/any.hpp>
#include <boost/program_options/value_semantic.hpp>

#include <vector>

namespace TALO::Reference {

namespace po = boost::program_options;

namespace {

std::vector<std::string> LongNamesOf(const po::options_description& options) {
  std::vector<std::string> names;
  names.reserve(options.options().size());
  for (const auto& option : options.options()) {
    names.push_back(option->long_name());
  }
  return names;
}

/// What stands for the value, empty for a switch. The library shows it with the default behind it.
std::string Placeholder(const po::option_description& option) {
  return option.semantic()->max_tokens() == 0
             ? ""
             : option.format_parameter().substr(0, option.format_parameter().find(' '));
}

std::string Form(const Piece& piece, const po::option_description& option) {
  const std::string placeholder = Placeholder(option);
  if (piece.word == "key") {
    return Bold(piece.name) + " = " + Italic(placeholder);
  }
  return Bold("--" + piece.name) + (placeholder.empty() ? "" : " " + Italic(placeholder));
}

/// The description as a sentence, and the default as another.
std::string Description(const po::option_description& option) {
  std::string text = Sentence(option.description()) + "\n";
  boost::any value;
  if (option.semantic()->apply_default(value)) {
    text += "The default is " + Bold(boost::any_cast<std::string>(value)) + ".\n";
  }
  return text;
}

}  // namespace

std::string DaemonPage(const std::string& source, const po::options_description& options) {
  std::string roff;
  Checklist names("an option", LongNamesOf(options));
  const auto pieces = ReadPieces(source);
  for (const Piece& piece : pieces) {
    if (piece.word == "option" || piece.word == "key") {
      const po::option_description& option = *options.options()[names.Tick(piece)];
      roff += ".TP\n" + Form(piece, option) + "\n" + Description(option);
    } else if (!piece.word.empty()) {
      throw SourceError(piece, "@" + piece.word + " has no place here");
    }
    roff += piece.text;
  }
  names.Finish(pieces.back());
  return roff;
}

}  // namespace TALO::Reference
