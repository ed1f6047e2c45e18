#include "client/bytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace TALO::Wifi {

namespace {

const std::string kReplacement = "\xEF\xBF\xBD";

std::string Replacements(std::size_t count) {
  std::string text;
  while (count-- > 0) {
    text += kReplacement;
  }
  return text;
}

const std::vector<std::string>& ValidTexts() {
  static const std::vector<std::string> texts = {
      "",
      "Home",
      std::string("\0", 1),
      std::string("a\0b", 3),
      "\x01\x7F",
      "\xC2\x80",          // U+0080, the first of two bytes
      "\xDF\xBF",          // U+07FF, the last of two bytes
      "\xE0\xA0\x80",      // U+0800, the first of three bytes
      "\xED\x9F\xBF",      // U+D7FF, before the surrogates
      "\xEE\x80\x80",      // U+E000, behind the surrogates
      "\xEF\xBF\xBD",      // U+FFFD itself
      "\xEF\xBF\xBF",      // U+FFFF, the last of three bytes
      "\xF0\x90\x80\x80",  // U+10000, the first of four bytes
      "\xF3\xBF\xBF\xBF",
      "\xF4\x8F\xBF\xBF",  // U+10FFFF, the last of all
      "Caf\xC3\xA9 \xE2\x98\x95 \xF0\x9F\x98\x80!",
  };
  return texts;
}

struct Invalid {
  std::string bytes;
  std::string readable;
};

const std::vector<Invalid>& InvalidTexts() {
  static const std::vector<Invalid> texts = {
      // No sequence begins so.
      {"\x80", Replacements(1)},
      {"\xBF", Replacements(1)},
      {"\xFE", Replacements(1)},
      {"\xFF\xFF", Replacements(2)},
      {"\xF5\x80\x80\x80", Replacements(4)},
      {"\xF8\x88\x80\x80\x80", Replacements(5)},
      // Overlong forms.
      {"\xC0\x80", Replacements(2)},
      {"\xC0\xAF", Replacements(2)},
      {"\xC1\xBF", Replacements(2)},
      {"\xE0\x80\xAF", Replacements(3)},
      {"\xE0\x9F\xBF", Replacements(3)},
      {"\xF0\x80\x80\xAF", Replacements(4)},
      {"\xF0\x8F\xBF\xBF", Replacements(4)},
      // Surrogates.
      {"\xED\xA0\x80", Replacements(3)},
      {"\xED\xBF\xBF", Replacements(3)},
      {"\xED\xA0\xBD\xED\xB8\x80", Replacements(6)},
      // Above U+10FFFF.
      {"\xF4\x90\x80\x80", Replacements(4)},
      {"\xF4\xBF\xBF\xBF", Replacements(4)},
      // Cut off at the end.
      {"\xC3", Replacements(1)},
      {"\xE2\x98", Replacements(2)},
      {"\xE2", Replacements(1)},
      {"\xF0\x9F\x98", Replacements(3)},
      {"\xF0\x9F", Replacements(2)},
      {"\xF0", Replacements(1)},
      // Cut off by something else.
      {"\xC3(", kReplacement + "("},
      {"\xE2(\x95", kReplacement + "(" + kReplacement},
      {"\xE2\x98(", Replacements(2) + "("},
      {"\xF0\x9F\x98(", Replacements(3) + "("},
      {"\xE2\x98\xC3\xA9", Replacements(2) + "\xC3\xA9"},
      {std::string("\xC3\0", 2), kReplacement + std::string(1, '\0')},
      // Amid text.
      {"Caf\xE9", "Caf" + kReplacement},
      {"\xFF"
       "Home\xFF",
       kReplacement + "Home" + kReplacement},
      {"a\xC3\xA9\xA9z", "a\xC3\xA9" + kReplacement + "z"},
  };
  return texts;
}

TEST(IsUTF8, IsTrueForTextOfEveryLengthOfSequence) {
  for (const std::string& text : ValidTexts()) {
    EXPECT_TRUE(IsUTF8(text)) << ToHex(text);
  }
}

TEST(IsUTF8, IsFalseForWhateverDoesNotFit) {
  for (const Invalid& text : InvalidTexts()) {
    EXPECT_FALSE(IsUTF8(text.bytes)) << ToHex(text.bytes);
  }
}

TEST(ToReadableText, LeavesUTF8AsItIs) {
  for (const std::string& text : ValidTexts()) {
    EXPECT_EQ(ToReadableText(text), text);
  }
}

TEST(ToReadableText, PutsOneReplacementForEachByteThatDoesNotFit) {
  for (const Invalid& text : InvalidTexts()) {
    SCOPED_TRACE(ToHex(text.bytes));
    EXPECT_EQ(ToReadableText(text.bytes), text.readable);
    EXPECT_TRUE(IsUTF8(text.readable));
  }
}

TEST(ToReadableText, MakesUTF8OfEverySingleByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(ToReadableText(text), byte < 128 ? text : kReplacement) << byte;
  }
}

TEST(ToHex, GivesTwoLowerCaseDigitsAByte) {
  EXPECT_EQ(ToHex(""), "");
  EXPECT_EQ(ToHex("Home"), "486f6d65");
  EXPECT_EQ(ToHex(std::string("\0\x01\x09\x0A\x0F\x10\x7F\x80\xAB\xFF", 10)), "0001090a0f107f80abff");
}

}  // namespace

}  // namespace TALO::Wifi
