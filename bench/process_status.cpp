#include "bench/process_status.h"

#include "support/files.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace TALO::Bench {

namespace {

std::string DirectoryOf(const EndToEnd::Process& process) { return "/proc/" + std::to_string(process.Id()); }

double NumberIn(const std::string& text, const std::string& name) {
  const auto at = text.find("\n" + name + ":");
  if (at == std::string::npos) {
    throw std::runtime_error("the kernel does not tell " + name);
  }
  return std::stod(text.substr(at + name.size() + 2));
}

}  // namespace

Memory ReadMemory(const EndToEnd::Process& process) {
  const std::string pages = ReadFile(DirectoryOf(process) + "/smaps_rollup");
  if (!pages.empty()) {
    return {NumberIn(pages, "Rss"), NumberIn(pages, "Anonymous")};
  }
  const std::string counts = ReadFile(DirectoryOf(process) + "/status");
  return {NumberIn(counts, "VmRSS"), NumberIn(counts, "RssAnon")};
}

double Waits(const EndToEnd::Process& process) {
  double waits = 0;
  for (const auto& thread : std::filesystem::directory_iterator(DirectoryOf(process) + "/task")) {
    waits += NumberIn(ReadFile(thread.path() / "status"), "voluntary_ctxt_switches");
  }
  return waits;
}

}  // namespace TALO::Bench
