#include "reference/signature.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TALO::Reference {

namespace {

TEST(SignatureInWords, NamesTheTypes) {
  EXPECT_EQ(SignatureInWords("b"), "boolean");
  EXPECT_EQ(SignatureInWords("i"), "int32");
  EXPECT_EQ(SignatureInWords("q"), "uint16");
  EXPECT_EQ(SignatureInWords("s"), "string");
  EXPECT_EQ(SignatureInWords("ay"), "bytes");
  EXPECT_EQ(SignatureInWords("as"), "list of string");
  EXPECT_EQ(SignatureInWords("(is)"), "(int32, string)");
  EXPECT_EQ(SignatureInWords("a{ias}"), "map of int32 to list of string");
  EXPECT_EQ(SignatureInWords("a(ia(ss)ay)"), "list of (int32, list of (string, string), bytes)");
}

TEST(SignatureInWords, RefusesWhatIsNone) {
  for (const char* text : {"", "a", "(i", "()", "a{i}", "a{isb}", "a{is", "ii", "x", "v", "i)"}) {
    EXPECT_THROW(SignatureInWords(text), std::invalid_argument) << text;
  }
}

}  // namespace

}  // namespace TALO::Reference
