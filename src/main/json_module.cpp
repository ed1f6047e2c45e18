#include "main/json_module.h"

#include <dlfcn.h>

#include <iostream>
#include <stdexcept>

namespace TALO::Tool {

namespace {

/// Looked for where the program says (its run path). It stays until the process ends.
JSONModuleEntry* fetchedEntry() {
  void* module = dlopen(kJSONModule, RTLD_LAZY | RTLD_LOCAL);
  void* entry = module != nullptr ? dlsym(module, kJSONModuleEntry) : nullptr;
  if (entry == nullptr) {
    throw std::runtime_error(std::string("cannot print JSON: ") + dlerror());
  }
  return reinterpret_cast<JSONModuleEntry*>(entry);  // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

}  // namespace

void printStyledJSON(Printable what) {
  std::string reason;
  const auto print = [](const char* text, std::size_t size) noexcept {
    std::cout.write(text, static_cast<std::streamsize>(size));
  };
  if (!fetchedEntry()(TALOWIFI_VERSION, what, print, reason)) {
    throw std::runtime_error("cannot print JSON: " + reason);
  }
}

}  // namespace TALO::Tool
