#pragma once

#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <string>
#include <vector>

namespace TALO::Tool {

/// What an option's declaration knows of the words that its values are.
class EnumWords {
 public:
  using Words = std::vector<std::string>;

  explicit EnumWords(Words (*words)()) : words_(words) {}
  EnumWords(const EnumWords&) = delete;
  EnumWords& operator=(const EnumWords&) = delete;
  virtual ~EnumWords() = default;

  Words Get() const { return words_(); }

 private:
  Words (*words_)();
};

/// The semantic of such an option. It parses like any other of its type.
template <typename Value>
class EnumSemantic final : public boost::program_options::typed_value<Value>, public EnumWords {
 public:
  explicit EnumSemantic(Words (*words)())
      : boost::program_options::typed_value<Value>(nullptr), EnumWords(words) {}
};

/// Like po::value<Value>(), for an option whose value, or each of whose values, names one of the enumeration.
/// A word that names none is refused where it is converted, not here.
template <typename E, typename Value = std::string>
boost::program_options::typed_value<Value>* enumValue() {
  return new EnumSemantic<Value>([] { return Wifi::Util::EnumWords<E>(); });
}

}  // namespace TALO::Tool
