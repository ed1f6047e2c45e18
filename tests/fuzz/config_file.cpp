// Any configuration file of the daemon. One that is taken is written and read again.

#include "daemon/main/options.h"
#include "daemon/radio/linux/hardware.h"
#include "fuzz/support/require.h"
#include "support/bus_ends.h"
#include "values/enum_names.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>

namespace TALO::Fuzz {

namespace {

using Wifid::Options;

std::optional<Options> Read(const std::string& text) {
  const Wifi::Bus::Descriptor file(memfd_create("talowifid.conf", MFD_CLOEXEC));
  Require(write(file.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()),
          "a file is written");
  const std::string path = "/proc/self/fd/" + std::to_string(file.Get());
  const std::array<const char*, 4> words = {"talowifid", "--config", path.c_str(), nullptr};
  try {
    const auto options = Wifid::ParseOptions(3, words.data());
    Require(options.has_value(), "nobody asks for help by a file");
    return options;
  } catch (const std::exception& refusal) {
    Require(*refusal.what() != '\0', "a refusal says why");
    return std::nullopt;
  }
}

std::string Write(const Options& options) {
  std::string text;
  const auto add = [&text](const char* key, const std::string& value) {
    text += std::string(key) + " = " + value + "\n";
  };
  const bool isLinux = options.radioDriver == Options::RadioDriver::Linux;
  add("radio-driver", isLinux ? "linux" : "simulated");
  add("model", Wifi::Util::EnumNameOf(options.model));
  add("country", Wifi::Util::EnumNameOf(options.country));
  add("bus", options.bus == Options::Bus::Session ? "session" : "system");
  add("state-dir", options.stateDirectory);
  add("hostapd", options.hostapd);
  add("wpa-supplicant", options.supplicant);
  add("runtime-dir", options.runtimeDirectory);
  add("bridge", options.bridge);
  add("access-group", options.accessGroup);
  add("log-level", Wifi::Util::EnumNameOf(options.logLevel));
  if (isLinux) {
    add("radios", options.radios);
  } else {
    add("scenario", options.scenario);
  }
  return text;
}

void CheckRadioMap(const Options& options) {
  const auto map = Wifid::ReadRadioMap(options.radios, options.model);
  if (!map.Succeeded()) {
    Require(!map.Why().sentence.empty(), "a refusal says why");
    return;
  }
  std::string text;
  for (const auto& [phy, radio] : map.Value()) {
    text += (text.empty() ? "" : ",") + phy + "=" + Wifi::Util::EnumNameOf(radio);
  }
  const auto again = Wifid::ReadRadioMap(text, options.model);
  Require(again.Succeeded() && again.Value() == map.Value(), "a map that was read is read again");
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  const auto options = Fuzz::Read(std::string(reinterpret_cast<const char*>(data), size));
  if (options) {
    Fuzz::CheckRadioMap(*options);
    const auto again = Fuzz::Read(Fuzz::Write(*options));
    Fuzz::Require(again.has_value() && Fuzz::Write(*again) == Fuzz::Write(*options),
                  "a configuration that was read is read again");
  }
  return 0;
}
