#pragma once

#include <boost/program_options/errors.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace TALO::Tool {

/// With a mark behind every percent sign, so that no placeholder is in it.
inline std::string withoutPlaceholders(std::string_view text) {
  std::string marked;
  for (const char c : text) {
    marked += c;
    if (c == '%') {
      marked += '\1';
    }
  }
  return marked;
}

/// What was marked, as it was before.
inline std::string withPlaceholders(std::string_view marked) {
  std::string text;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    text += marked[i];
    if (marked[i] == '%') {
      ++i;
    }
  }
  return text;
}

/// What `parse` makes of the words. What the option library refuses says why in the library's own sentence,
/// whatever the words hold: it fills in the placeholders of its sentences, as in "%value%", until there is
/// none, and never ends where a word brings one along.
template <typename Parse>
auto parseWords(const std::vector<std::string>& words, Parse parse) {
  const auto holdsPercent = [](const std::string& word) { return word.find('%') != std::string::npos; };
  try {
    return parse(words);
  } catch (const boost::program_options::error_with_option_name&) {
    if (std::ranges::none_of(words, holdsPercent)) {
      throw;
    }
  }
  std::vector<std::string> marked;
  std::ranges::transform(words, std::back_inserter(marked), withoutPlaceholders);
  try {
    return parse(marked);
  } catch (const std::exception& refusal) {
    throw boost::program_options::error(withPlaceholders(refusal.what()));
  }
}

}  // namespace TALO::Tool
