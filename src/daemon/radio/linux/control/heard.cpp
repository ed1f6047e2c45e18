#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/control/replies.h"
#include "daemon/radio/linux/control/words.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace TALO::Wifid {

namespace {

using Fields = std::map<std::string, std::string>;

constexpr const char* kListHeardWithoutElements = "BSS RANGE=ALL MASK=0x21a87";

/// On lines of their own: an SSID may end like them.
constexpr std::string_view kEntryEnd = "\n====\n";

/// The entries that came whole: each begins with its ID and ends with the line between two, or with the one
/// at the end.
std::vector<Fields> ReadEntries(std::string_view reply) {
  constexpr std::string_view kListEnd = "\n####\n";
  std::vector<Fields> entries;
  while (!reply.empty()) {
    const std::size_t length = std::min(reply.find(kEntryEnd), reply.find(kListEnd));
    if (length == std::string_view::npos) {
      break;
    }
    Fields entry = ReadFields(std::string(reply.substr(0, length)));
    if (entry.contains("id")) {
      entries.push_back(std::move(entry));
    }
    reply.remove_prefix(length + kEntryEnd.size());
  }
  return entries;
}

/// The words between the brackets, as in "[WPA2-PSK+SAE-CCMP][WPS][ESS]".
std::vector<std::string_view> FlagsOf(std::string_view text) {
  std::vector<std::string_view> flags;
  for (std::size_t begin = text.find('['); begin != std::string_view::npos; begin = text.find('[')) {
    text.remove_prefix(begin + 1);
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) {
      break;
    }
    flags.push_back(text.substr(0, end));
  }
  return flags;
}

bool HasFlag(const std::vector<std::string_view>& flags, std::string_view flag) {
  return std::ranges::find(flags, flag) != flags.end();
}

/// The key managements of one protocol.
struct KeyManagements {
  bool personal = false;
  bool sae = false;
  bool owe = false;
  bool enterprise = false;
  bool strictEnterprise = false;  ///< ways that only WPA3 asks for
};

/// Adds what one word names; behind it may stand "-" and the ciphers.
void AddManagement(std::string_view word, KeyManagements& found) {
  constexpr std::string_view kFastTransition = "FT/";
  if (word.starts_with(kFastTransition)) {
    word.remove_prefix(kFastTransition.size());
  }
  const bool isStrict = word.starts_with("EAP-SHA256") || word.starts_with("EAP-SUITE-B");
  found.personal = found.personal || word.starts_with("PSK");
  found.sae = found.sae || word.starts_with("SAE");
  found.owe = found.owe || word.starts_with("OWE");
  found.strictEnterprise = found.strictEnterprise || isStrict;
  found.enterprise = found.enterprise || (word.starts_with("EAP") && !isStrict);
}

/// Of "WPA2-" what stands in "WPA2-PSK+FT/SAE-CCMP+TKIP".
KeyManagements ReadManagements(const std::vector<std::string_view>& flags, std::string_view protocol) {
  KeyManagements found;
  for (std::string_view flag : flags) {
    if (!flag.starts_with(protocol)) {
      continue;
    }
    flag.remove_prefix(protocol.size());
    while (!flag.empty()) {
      const std::size_t length = std::min(flag.find('+'), flag.size());
      AddManagement(flag.substr(0, length), found);
      flag.remove_prefix(std::min(length + 1, flag.size()));
    }
  }
  return found;
}

Wifi::Util::SecurityMode SecurityOf(const std::vector<std::string_view>& flags) {
  using Mode = Wifi::Util::SecurityMode;
  const KeyManagements wpa = ReadManagements(flags, "WPA-");
  const KeyManagements wpa2 = ReadManagements(flags, "WPA2-");
  if (wpa2.sae) {
    return wpa2.personal ? Mode::PersonalWPA2_3Mixed : Mode::PersonalWPA3;
  }
  if (wpa.personal || wpa2.personal) {
    return !wpa.personal ? Mode::PersonalWPA2 : wpa2.personal ? Mode::PersonalWPAMixed : Mode::PersonalWPA;
  }
  if (wpa2.owe) {
    return Mode::OWE;
  }
  if (wpa.enterprise || wpa2.enterprise) {
    return !wpa.enterprise   ? Mode::EnterpriseWPA2
           : wpa2.enterprise ? Mode::EnterpriseWPAMixed
                             : Mode::EnterpriseWPA;
  }
  if (wpa2.strictEnterprise) {
    return Mode::EnterpriseWPA3;
  }
  if (HasFlag(flags, "WEP")) {
    return Mode::WEP;
  }
  const bool isOther = std::ranges::any_of(flags, [](std::string_view flag) {
    return flag.starts_with("WPA") || flag.starts_with("OSEN") || flag.starts_with("RSN");
  });
  return isOther ? Mode::Error : Mode::Disabled;
}

/// One of the information elements, without its head; empty where it is not there.
std::string_view FindElement(std::string_view elements, unsigned char id) {
  constexpr std::size_t kHead = 2;
  while (elements.size() >= kHead) {
    const std::size_t length = static_cast<unsigned char>(elements[1]);
    if (static_cast<unsigned char>(elements[0]) == id) {
      return elements.substr(kHead, length);
    }
    elements.remove_prefix(std::min(kHead + length, elements.size()));
  }
  return {};
}

/// MHz, by the elements HT Operation and VHT Operation.
int WidthOf(std::string_view elements) {
  constexpr unsigned char kHTOperation = 61;
  constexpr unsigned char kVHTOperation = 192;
  const std::string_view vht = FindElement(elements, kVHTOperation);
  if (vht.size() >= 3 && vht[0] != 0) {
    // 1 stands for 80 and more: more where there is the middle of a second part. 2 and 3 are older words for
    // more.
    const int second = static_cast<unsigned char>(vht[2]);
    return vht[0] != 1 || second != 0 ? 160 : 80;
  }
  constexpr unsigned kSecondaryOffset = 3;
  constexpr unsigned kAnyWidth = 4;
  const std::string_view ht = FindElement(elements, kHTOperation);
  const unsigned subset = ht.size() >= 2 ? static_cast<unsigned char>(ht[1]) : 0;
  return (subset & kSecondaryOffset) != 0 && (subset & kAnyWidth) != 0 ? 40 : 20;
}

/// A hidden SSID is empty, or as long as the real one and of zero bytes.
std::string ShownSSID(const std::string& printed) {
  const std::string ssid = ReadSSID(printed);
  return ssid.find_first_not_of('\0') == std::string::npos ? std::string() : ssid;
}

}  // namespace

std::string ListHeardAfter(int id, Elements elements) {
  std::string command = elements == Elements::With ? kListHeard : kListHeardWithoutElements;
  constexpr std::string_view kAll = "ALL";
  return command.replace(command.find(kAll), kAll.size(), std::to_string(id + 1LL) + "-");
}

std::string FirstHeard(const std::string& reply) {
  const std::size_t end = reply.find(kEntryEnd);
  return end == std::string::npos ? reply : reply.substr(0, end + kEntryEnd.size());
}

std::vector<Wifi::ScanResult> ReadHeard(const std::string& reply, Wifi::Util::RadioFrequency radio) {
  std::vector<Wifi::ScanResult> results;
  for (Fields& entry : ReadEntries(reply)) {
    const auto bssid = ReadAddress(entry["bssid"]);
    const int channel = ChannelAt(ReadNumber(entry["freq"]).value_or(0));
    const std::vector<std::string_view> flags = FlagsOf(entry["flags"]);
    if (!bssid || channel == 0 || !HasFlag(flags, "ESS")) {
      continue;
    }
    Wifi::ScanResult result;
    result.radio = radio;
    result.ssid = ShownSSID(entry["ssid"]);
    result.bssid = *bssid;
    result.channel = channel;
    result.channelWidth = WidthOf(ReadHex(entry["ie"]).value_or(std::string()));
    result.signal = ReadNumber(entry["level"]).value_or(0);
    result.securityMode = SecurityOf(flags);
    result.wps = std::ranges::any_of(flags, [](std::string_view flag) { return flag.starts_with("WPS"); });
    result.age = std::max(ReadNumber(entry["age"]).value_or(0), 0);
    results.push_back(std::move(result));
  }
  return results;
}

int LastHeardId(const std::string& reply) {
  std::vector<Fields> entries = ReadEntries(reply);
  return entries.empty() ? -1 : std::max(ReadNumber(entries.back()["id"]).value_or(-1), -1);
}

}  // namespace TALO::Wifid
