#include "daemon/radio/linux/control/replies.h"

#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/control/words.h"

#include <cstddef>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace TALO::Wifid {

namespace {

using Fields = std::map<std::string, std::string>;

std::string Find(const Fields& fields, const std::string& key) {
  const auto field = fields.find(key);
  return field == fields.end() ? std::string() : field->second;
}

int FindNumber(const Fields& fields, const std::string& key) {
  return ReadNumber(Find(fields, key)).value_or(0);
}

LiveUpstream::Phase PhaseOf(const std::string& state) {
  using Phase = LiveUpstream::Phase;
  static const std::map<std::string, Phase> kPhases = {
      {"DISCONNECTED", Phase::Scanning},      {"SCANNING", Phase::Scanning},
      {"AUTHENTICATING", Phase::Connecting},  {"ASSOCIATING", Phase::Connecting},
      {"ASSOCIATED", Phase::Connecting},      {"4WAY_HANDSHAKE", Phase::Connecting},
      {"GROUP_HANDSHAKE", Phase::Connecting}, {"COMPLETED", Phase::Connected},
  };
  const auto phase = kPhases.find(state);
  return phase == kPhases.end() ? Phase::Disabled : phase->second;
}

/// What an escape stands for and how long it is, the backslash included; nothing for what is no escape.
std::optional<std::pair<char, std::size_t>> ReadEscape(std::string_view text) {
  constexpr std::string_view kLetters = "\\\"enrt";
  constexpr std::string_view kMeanings = "\\\"\033\n\r\t";
  if (text.size() < 2) {
    return std::nullopt;
  }
  if (const std::size_t letter = kLetters.find(text[1]); letter != std::string_view::npos) {
    return std::pair(kMeanings[letter], std::size_t{2});
  }
  constexpr std::size_t kHexLength = 4;
  if (text[1] != 'x' || text.size() < kHexLength) {
    return std::nullopt;
  }
  const std::optional<std::string> byte = ReadHex(text.substr(2, 2));
  return byte ? std::optional(std::pair(byte->front(), kHexLength)) : std::nullopt;
}

}  // namespace

std::map<std::string, std::string> ReadFields(const std::string& reply) {
  Fields fields;
  std::istringstream lines(reply);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) {
      fields[line.substr(0, equals)] = line.substr(equals + 1);
    }
  }
  return fields;
}

std::string ReadSSID(const std::string& printed) {
  std::string bytes;
  std::string_view rest = printed;
  while (!rest.empty()) {
    const auto escape = rest.starts_with('\\') ? ReadEscape(rest) : std::nullopt;
    bytes += escape ? escape->first : rest.front();
    rest.remove_prefix(escape ? escape->second : 1);
  }
  return bytes;
}

LiveUpstream ReadUpstream(const std::string& status, const std::string& signal) {
  const Fields fields = ReadFields(status);
  LiveUpstream upstream;
  upstream.phase = PhaseOf(Find(fields, "wpa_state"));
  upstream.ssid = ReadSSID(Find(fields, "ssid"));
  upstream.bssid = ReadAddress(Find(fields, "bssid")).value_or(Wifi::Util::MACAddress());
  upstream.channel = ChannelAt(FindNumber(fields, "freq"));
  if (upstream.phase == LiveUpstream::Phase::Connected) {
    const Fields measured = ReadFields(signal);
    upstream.signal = FindNumber(measured, "RSSI");
    upstream.transmitRate = FindNumber(measured, "LINKSPEED");
  }
  return upstream;
}

}  // namespace TALO::Wifid
