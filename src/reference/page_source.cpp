#include "reference/page_source.h"

#include <sstream>
#include <utility>

namespace TALO::Reference {

std::vector<Piece> ReadPieces(const std::string& source) {
  std::vector<Piece> pieces(1);
  pieces.front().line = 1;
  std::istringstream lines(source);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (!line.starts_with('@')) {
      pieces.back().text += line + "\n";
      continue;
    }
    Piece& piece = pieces.emplace_back();
    piece.line = number;
    std::istringstream words(line.substr(1));
    words >> piece.word >> piece.name >> std::ws;
    std::getline(words, piece.sentence);
  }
  return pieces;
}

Checklist::Checklist(std::string what, std::vector<std::string> names)
    : what_(std::move(what)), names_(std::move(names)) {}

std::size_t Checklist::Tick(const Piece& piece) {
  if (next_ == names_.size()) {
    throw SourceError(piece, piece.name + " is not " + what_ + " that comes here");
  }
  if (names_[next_] != piece.name) {
    throw SourceError(piece, names_[next_] + ", " + what_ + ", comes here, not " + piece.name);
  }
  return next_++;
}

void Checklist::Finish(const Piece& piece) const {
  if (next_ != names_.size()) {
    throw SourceError(piece, names_[next_] + ", " + what_ + ", is missing");
  }
}

}  // namespace TALO::Reference
