#include "hwsim/support/programs.h"

#include "support/files.h"

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace TALO::Hwsim {

using EndToEnd::Process;
using EndToEnd::ProcessSetup;

std::string OutputOf(const Words& words) {
  Process process(ProcessSetup{.words = words});
  if (const int status = process.Wait(); status != 0) {
    std::string line;
    for (const std::string& word : words) {
      line += word + " ";
    }
    throw std::runtime_error(line + "ended with status " + std::to_string(status) + ":\n" + process.Output() +
                             process.Errors());
  }
  return process.Output();
}

bool Succeeds(const Words& words) { return Process(ProcessSetup{.words = words}).Wait() == 0; }

std::string LogFile(const std::string& name) {
  const char* directory = std::getenv("TALOWIFI_SCENARIO_LOGS");
  if (directory == nullptr) {
    throw std::runtime_error("scenarios run in a machine of their own: ./test --hwsim");
  }
  return std::string(directory) + "/" + name;
}

ProcessSetup Logged(const std::string& log, const Words& words) {
  return {.words = Words{"/bin/sh", "-c", "exec \"$@\" >>\"$0\" 2>&1", LogFile(log)} + words};
}

Words operator+(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

pid_t FindChild(pid_t parent, const std::string& name) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string().front())) == 0) {
      continue;
    }
    // The number, the name in brackets, the state, the parent.
    std::istringstream fields(ReadFile(entry.path() / "stat"));
    pid_t id = -1;
    std::string command;
    std::string state;
    pid_t itsParent = -1;
    if (fields >> id >> command >> state >> itsParent && itsParent == parent && command == "(" + name + ")") {
      return id;
    }
  }
  return -1;
}

}  // namespace TALO::Hwsim
