#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

/// The hand-written part of a manual page: roff, and lines that begin with "@" where something made from the
/// programs goes. What is read of such a line is its word, a name, and a sentence.
namespace TALO::Reference {

/// A stretch of a page: a line with "@" and the roff that follows it.
struct Piece {
  std::string word = {};      ///< what follows the "@", empty for what stands before the first
  std::string name = {};      ///< what it is about
  std::string sentence = {};  ///< plain text, the rest of the line
  std::string text = {};      ///< the lines up to the next "@", as they stand
  int line = 0;               ///< where it begins

  bool operator==(const Piece&) const = default;
};

/// The pieces in their order, the first without a word.
std::vector<Piece> ReadPieces(const std::string& source);

/// What is wrong with a page's source, with the line.
class SourceError : public std::runtime_error {
 public:
  SourceError(const Piece& piece, const std::string& what)
      : std::runtime_error("line " + std::to_string(piece.line) + ": " + what) {}
};

/// What things are called, in their order.
template <typename Items>
std::vector<std::string> NamesOf(const Items& items) {
  std::vector<std::string> names;
  names.reserve(items.size());
  for (const auto& item : items) {
    names.push_back(item.name);
  }
  return names;
}

/// Holds what the pieces are about against what there is: each name once, in the order given.
class Checklist {
 public:
  /// `what` is what each of them is, as in "a command".
  Checklist(std::string what, std::vector<std::string> names);

  /// Where the piece's name stands among those. Throws SourceError for one that is not the next.
  std::size_t Tick(const Piece& piece);

  /// Throws SourceError where a name is left; `piece` is what comes instead.
  void Finish(const Piece& piece) const;

 private:
  std::string what_;
  std::vector<std::string> names_;
  std::size_t next_ = 0;
};

}  // namespace TALO::Reference
