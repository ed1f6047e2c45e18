#include "reference/signature.h"

#include <stdexcept>

namespace TALO::Reference {

namespace {

/// Takes the first types of a signature away, one at a time.
class Reader {
 public:
  explicit Reader(std::string_view left) : left_(left) {}

  bool IsAtEnd() const { return left_.empty(); }

  std::string ReadType() {
    switch (const char code = Take()) {
      case 'b':
        return "boolean";
      case 'i':
        return "int32";
      case 'q':
        return "uint16";
      case 's':
        return "string";
      case '(':
        return "(" + ReadMembers() + ")";
      case 'a':
        return ReadArray();
      default:
        throw std::invalid_argument(std::string("no type is written ") + code);
    }
  }

 private:
  char Take() {
    if (left_.empty()) {
      throw std::invalid_argument("a signature ends too early");
    }
    const char code = left_.front();
    left_.remove_prefix(1);
    return code;
  }

  bool TakeIf(char code) {
    const bool there = left_.starts_with(code);
    if (there) {
      left_.remove_prefix(1);
    }
    return there;
  }

  std::string ReadMembers() {
    std::string members = ReadType();
    while (!TakeIf(')')) {
      members += ", " + ReadType();
    }
    return members;
  }

  std::string ReadArray() {
    if (TakeIf('y')) {
      return "bytes";
    }
    if (!TakeIf('{')) {
      return "list of " + ReadType();
    }
    const std::string key = ReadType();
    const std::string value = ReadType();
    if (!TakeIf('}')) {
      throw std::invalid_argument("a map has a key and a value");
    }
    return "map of " + key + " to " + value;
  }

  std::string_view left_;
};

}  // namespace

std::string SignatureInWords(std::string_view signature) {
  Reader reader(signature);
  std::string words = reader.ReadType();
  if (!reader.IsAtEnd()) {
    throw std::invalid_argument("an argument has one type");
  }
  return words;
}

}  // namespace TALO::Reference
