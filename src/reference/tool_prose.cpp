#include "reference/tool_prose.h"

#include <utility>

namespace TALO::Reference {

namespace {

/// Takes the pieces one after the other.
class Reader {
 public:
  explicit Reader(std::vector<Piece> pieces) : pieces_(std::move(pieces)) {}

  bool Is(const std::string& word) const { return next_ < pieces_.size() && Next().word == word; }

  /// The next piece. Throws SourceError where it is not of this word.
  Piece Take(const std::string& word) {
    if (!Is(word)) {
      throw SourceError(next_ < pieces_.size() ? Next() : pieces_.back(), "@" + word + " is missing");
    }
    return pieces_[next_++];
  }

  const Piece& Next() const { return pieces_[next_]; }
  bool IsAtEnd() const { return next_ == pieces_.size(); }

 private:
  std::vector<Piece> pieces_;
  std::size_t next_ = 0;
};

Piece TakeWithSentence(Reader& reader, const std::string& word) {
  Piece piece = reader.Take(word);
  if (piece.sentence.empty()) {
    throw SourceError(piece, "@" + word + " " + piece.name + " says nothing");
  }
  return piece;
}

Piece TakeWithText(Reader& reader, const std::string& word) {
  Piece piece = reader.Take(word);
  if (piece.text.empty() || !piece.name.empty()) {
    throw SourceError(piece, "@" + word + " stands alone, with its text below");
  }
  return piece;
}

CommandProse ReadCommand(Reader& reader, const CommandReference& command) {
  CommandProse prose{command, TakeWithSentence(reader, "command")};
  Checklist options("an option of " + command.name, NamesOf(command.options));
  while (reader.Is("option")) {
    prose.options.push_back(TakeWithSentence(reader, "option"));
    options.Tick(prose.options.back());
  }
  prose.prints = TakeWithText(reader, "prints");
  options.Finish(prose.prints);
  if (reader.Is("refused")) {
    prose.refusals.push_back(TakeWithText(reader, "refused"));
  }
  do {
    prose.examples.push_back(TakeWithText(reader, "example"));
  } while (reader.Is("example"));
  return prose;
}

}  // namespace

ToolProse ReadToolProse(const std::string& source, const std::vector<CommandReference>& commands) {
  Reader reader(ReadPieces(source));
  ToolProse prose{.before = reader.Take("").text, .commands = {}, .after = {}};
  Checklist names("a command", NamesOf(commands));
  for (const CommandReference& command : commands) {
    if (reader.Is("command")) {
      names.Tick(reader.Next());
    } else if (reader.Is("end")) {
      names.Finish(reader.Next());
    }
    prose.commands.push_back(ReadCommand(reader, command));
  }
  if (reader.Is("command")) {
    names.Tick(reader.Next());
  }
  prose.after = reader.Take("end").text;
  if (!reader.IsAtEnd()) {
    throw SourceError(reader.Next(), "@end is the last");
  }
  return prose;
}

}  // namespace TALO::Reference
