#include "daemon/model/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

TEST(Quoted, ShowsReadableTextAsItIsAndEverythingElseAsItsBytes) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "\"\""},
      {"Home", "\"Home\""},
      {" two  words ", "\" two  words \""},
      {"say \"hi\"", "\"say \\\"hi\\\"\""},
      {"back\\slash", "\"back\\\\slash\""},
      {"\\x0a", "\"\\\\x0a\""},
      {"caf\xc3\xa9", "\"caf\xc3\xa9\""},
      {"\xf0\x9f\x93\xb6", "\"\xf0\x9f\x93\xb6\""},
      {std::string(1, '\0'), "\"\\x00\""},
      {"a\nb\rc\td", "\"a\\x0ab\\x0dc\\x09d\""},
      {"\x1b[31m", "\"\\x1b[31m\""},
      {"\x1f\x20\x7e\x7f", "\"\\x1f ~\\x7f\""},
      {"\xff", "\"\\xff\""},
      // One byte that does not fit makes all that is not ASCII doubtful.
      {"caf\xc3\xa9\xff", "\"caf\\xc3\\xa9\\xff\""},
      {"\xc3", "\"\\xc3\""},
      {"\x80", "\"\\x80\""},
      {"\xed\xa0\x80", "\"\\xed\\xa0\\x80\""},
  };
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(Quoted(bytes), text);
  }
}

TEST(Quoted, ShowsControlCharactersBeyondASCIIAsTheirBytes) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"\xc2\x80", "\"\\xc2\\x80\""},
      {"\xc2\x85", "\"\\xc2\\x85\""},
      {"\xc2\x9b"
       "31m",
       "\"\\xc2\\x9b31m\""},
      {"\xc2\x9f", "\"\\xc2\\x9f\""},
      {"\xc2\xa0", "\"\xc2\xa0\""},
      // The same bytes in the middle of other characters are no control characters.
      {"\xe2\x82\x80", "\"\xe2\x82\x80\""},
  };
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(Quoted(bytes), text);
  }
}

TEST(Quoted, ShowsLineAndParagraphSeparatorsAsTheirBytes) {
  EXPECT_EQ(Quoted("a\xe2\x80\xa8z"), "\"a\\xe2\\x80\\xa8z\"");
  EXPECT_EQ(Quoted("a\xe2\x80\xa9z"), "\"a\\xe2\\x80\\xa9z\"");
  EXPECT_EQ(Quoted("a\xe2\x80\xa7z"), "\"a\xe2\x80\xa7z\"");
}

TEST(FormatTime, ShowsUTCToTheSecond) {
  const std::vector<std::pair<std::int64_t, std::string>> rows = {
      {0, "1970-01-01T00:00:00Z"},
      {1, "1970-01-01T00:00:01Z"},
      {-1, "1969-12-31T23:59:59Z"},
      {86399, "1970-01-01T23:59:59Z"},
      {86400, "1970-01-02T00:00:00Z"},
      {951782400, "2000-02-29T00:00:00Z"},
      {1769860800, "2026-01-31T12:00:00Z"},
      {2147483647, "2038-01-19T03:14:07Z"},
      {2147483648, "2038-01-19T03:14:08Z"},
      {4107542400, "2100-03-01T00:00:00Z"},
      {253402300799, "9999-12-31T23:59:59Z"},
  };
  for (const auto& [seconds, text] : rows) {
    EXPECT_EQ(FormatTime(seconds), text);
  }
}

TEST(FormatTime, IsEmptyForATimeThatNoCalendarHas) {
  EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::max()), "");
  EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::min()), "");
}

}  // namespace

}  // namespace TALO::Wifid
