// The libraries offer what is listed here and nothing else. A line may be added; one that is gone or changed
// breaks programs in the field, and needs another SONAME.

#include "support/end_to_end_test.h"
#include "support/files.h"

#include <set>
#include <sstream>

namespace TALO::EndToEnd {

namespace {

void Replace(std::string& text, const std::string& what, const std::string& by) {
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

/// The names that a library offers, with the standard library's own as they are written in programs.
std::set<std::string> SymbolsOf(const std::string& library) {
  Process nm(
      {.words = {"nm", "--dynamic", "--defined-only", "--demangle", "--with-symbol-versions", library}});
  const ToolRun run = Finish(nm);
  EXPECT_EQ(run.status, 0) << run.errors;
  std::set<std::string> symbols;
  std::istringstream lines(run.output);
  for (std::string line; std::getline(lines, line);) {
    // Value and type go before the name.
    std::string name = line.substr(line.find(' ') + 3);
    Replace(name, "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >",
            "std::string");
    Replace(name, "std::basic_string_view<char, std::char_traits<char> >", "std::string_view");
    Replace(name, "[abi:cxx11]", "");
    symbols.insert(name);
  }
  return symbols;
}

std::set<std::string> LinesOf(const std::string& path) {
  std::set<std::string> kept;
  std::istringstream lines(ReadFile(path));
  for (std::string line; std::getline(lines, line);) {
    kept.insert(line);
  }
  return kept;
}

void ExpectExactly(const std::string& library, const std::string& kept) {
  const auto symbols = SymbolsOf(library);
  const auto lines = LinesOf(std::string(TALOWIFI_SOURCE_DIR) + "/packaging/library/" + kept);
  for (const std::string& symbol : symbols) {
    EXPECT_TRUE(lines.contains(symbol)) << "not listed: " << symbol;
  }
  for (const std::string& line : lines) {
    EXPECT_TRUE(symbols.contains(line)) << "not offered: " << line;
  }
}

TEST(ExportedSymbols, OfTheClientLibraryAreThoseThatAreListed) {
  ExpectExactly(LIBTALOWIFI, "talowifi.symbols");
}

TEST(ExportedSymbols, OfTheDaemonLibraryAreThoseThatAreListed) {
  ExpectExactly(LIBTALOWIFIDAEMON, "talowifidaemon.symbols");
}

}  // namespace

}  // namespace TALO::EndToEnd
