#include "daemon/main/options.h"
#include "reference/bus_page.h"
#include "reference/completion.h"
#include "reference/daemon_page.h"
#include "reference/tool_page.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace TALO::Reference {

namespace {

using Words = std::vector<std::string>;

std::ifstream Open(const std::string& path) {
  std::ifstream file(path);
  file.exceptions(std::ios::badbit);
  if (!file) {
    throw std::runtime_error("it cannot be read");
  }
  return file;
}

std::string Read(const std::string& path) {
  std::ifstream file = Open(path);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The document of this kind from its source and the files that it takes beside that.
std::string Make(const std::string& kind, const std::string& source, const Words& others) {
  if (kind == "tool-page") {
    return ToolPage(ReadToolProse(source, ReadCommands()));
  }
  if (kind == "daemon-page") {
    return DaemonPage(source, Wifid::AllOptions());
  }
  if (kind == "configuration-page") {
    return DaemonPage(source, Wifid::ConfigOptions());
  }
  if (kind == "bus-page") {
    std::vector<BusInterfaceDocument> interfaces;
    for (const std::string& path : others) {
      std::ifstream xml = Open(path);
      interfaces.push_back(ReadBusDocument(xml));
    }
    return BusPage(source, interfaces, ReadBusErrors());
  }
  const ToolProse prose = ReadToolProse(Read(others.at(0)), ReadCommands());
  if (kind == "bash") {
    return BashCompletion(source, prose);
  }
  if (kind == "zsh") {
    return ZshCompletion(source, prose);
  }
  throw std::invalid_argument("there is no document of the kind " + kind);
}

}  // namespace

}  // namespace TALO::Reference

// talowifi-reference KIND SOURCE [FILE...] prints a document.
int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  try {
    std::cout << TALO::Reference::Make(words.at(0), TALO::Reference::Read(words.at(1)),
                                       {words.begin() + 2, words.end()})
              << std::flush;
    return std::cout.good() ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cerr << "talowifi-reference: " << (argc > 2 ? words[1] + ": " : "") << failure.what() << std::endl;
    return EXIT_FAILURE;
  }
}
