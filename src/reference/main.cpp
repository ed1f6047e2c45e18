#include "daemon/main/options.h"
#include "reference/bus_page.h"
#include "reference/completion.h"
#include "reference/daemon_page.h"
#include "reference/tool_page.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace TALO::Reference {

namespace {

using Words = std::vector<std::string>;

std::string Read(const std::string& path) {
  std::ifstream file(path);
  file.exceptions(std::ios::badbit);
  if (!file) {
    throw std::runtime_error("it cannot be read");
  }
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What `make` makes of a file's text; a failure names the file.
template <typename Maker>
auto MakeOf(const std::string& path, Maker make) {
  try {
    return make(Read(path));
  } catch (const std::exception& failure) {
    throw std::runtime_error(path + ": " + failure.what());
  }
}

ToolProse ReadTool(const std::string& path) {
  return MakeOf(path, [](const std::string& source) { return ReadToolProse(source, ReadCommands()); });
}

std::vector<BusInterfaceDocument> ReadInterfaces(const Words& paths) {
  std::vector<BusInterfaceDocument> interfaces;
  std::ranges::transform(paths, std::back_inserter(interfaces), [](const std::string& path) {
    return MakeOf(path, [](const std::string& xml) { return ReadBusDocument(xml); });
  });
  return interfaces;
}

/// The document of this kind from its source and the files that it takes beside that.
std::string Make(const std::string& kind, const std::string& path, const Words& others) {
  if (kind == "tool-page") {
    return ToolPage(ReadTool(path));
  }
  if (kind == "bash" || kind == "zsh") {
    const ToolProse prose = ReadTool(others.at(0));
    return MakeOf(path, [&](const std::string& source) {
      return kind == "bash" ? BashCompletion(source, prose) : ZshCompletion(source, prose);
    });
  }
  if (kind == "bus-page") {
    const auto interfaces = ReadInterfaces(others);
    return MakeOf(path,
                  [&](const std::string& source) { return BusPage(source, interfaces, ReadBusErrors()); });
  }
  if (kind == "daemon-page" || kind == "configuration-page") {
    return MakeOf(path, [&](const std::string& source) {
      return DaemonPage(source, kind == "daemon-page" ? Wifid::AllOptions() : Wifid::ConfigOptions());
    });
  }
  throw std::invalid_argument("there is no document of the kind " + kind);
}

}  // namespace

}  // namespace TALO::Reference

// talowifi-reference KIND SOURCE [FILE...] prints a document.
int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  try {
    if (words.size() < 2) {
      throw std::invalid_argument("usage: talowifi-reference KIND SOURCE [FILE...]");
    }
    std::cout << TALO::Reference::Make(words.at(0), words.at(1), {words.begin() + 2, words.end()})
              << std::flush;
    return std::cout.good() ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cerr << "talowifi-reference: " << failure.what() << std::endl;
    return EXIT_FAILURE;
  }
}
