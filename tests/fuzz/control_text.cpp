// Whatever hostapd and wpa_supplicant say: an answer, and behind a zero byte another, as for the two that
// tell how a station stands.

#include "client/bytes.h"
#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/control/replies.h"
#include "daemon/radio/linux/control/words.h"
#include "daemon/system/line_cutter.h"
#include "fuzz/support/require.h"
#include "fuzz/support/two_texts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace TALO::Fuzz {

namespace {

constexpr const char* kWhatIsAsked = " MASK=0x21e87";

void ReadScan(const std::string& answer) {
  for (const auto radio : {Wifi::Util::RadioFrequency::Band2_4GHz, Wifi::Util::RadioFrequency::Band5GHz}) {
    const auto heard = Wifid::ReadHeard(answer, radio);
    Require(heard.size() <= static_cast<std::size_t>(std::ranges::count(answer, '\n')) + 1,
            "an access point takes a line at least");
    for (const Wifi::ScanResult& each : heard) {
      Require(each.radio == radio, "a radio heard what it heard");
      Require(each.channel > 0 && each.channelWidth >= 20 && each.channelWidth <= 160, "a channel is one");
      Require(each.age >= 0, "nothing was heard in the future");
    }
  }
  const int last = Wifid::LastHeardId(answer);
  Require(last >= -1, "an ID is one, or there is none");
  Require(Wifid::ListHeardAfter(last) == "BSS RANGE=" + std::to_string(last + 1LL) + "-" + kWhatIsAsked,
          "the next question is for what comes after the last ID");
}

/// As they print it: what they escape, and as hexadecimal escapes alone.
std::string Escaped(const std::string& bytes) {
  std::string escaped;
  for (const char c : bytes) {
    escaped += "\\x" + Wifi::ToHex(std::string(1, c));
  }
  return escaped;
}

void ReadWords(const std::string& answer) {
  Require(Wifid::ReadSSID(answer).size() <= answer.size(), "an escape is no shorter than what it stands for");
  Require(Wifid::ReadSSID(Escaped(answer)) == answer, "every byte has an escape");
  const auto bytes = Wifid::ReadHex(Wifi::ToHex(answer));
  Require(bytes == answer, "bytes in digits are the bytes");
  if (const auto address = Wifid::ReadAddress(answer)) {
    Require(Wifid::ReadAddress(address->ToString()) == address, "an address is read as it is written");
  }
  if (const auto number = Wifid::ReadNumber(answer)) {
    Require(Wifid::ReadNumber(std::to_string(*number)) == number, "a number is read as it is written");
  }
  for (const auto& [key, value] : Wifid::ReadFields(answer)) {
    Require(answer.find(key + "=" + value) != std::string::npos, "a field is a line of the answer");
  }
}

void ReadEvent(const std::string& datagram) {
  const auto message = Wifid::ReadMessage(datagram);
  if (!message) {
    return;
  }
  Require(!message->name.empty(), "a message has a name");
  if (const auto address = message->Address()) {
    Require(datagram.size() >= address->ToString().size(), "the address is in the message");
  }
}

/// In pieces as at once.
void CutLines(const std::string& text, std::size_t piece) {
  Wifid::LineCutter whole;
  auto lines = whole.Take(text);
  std::ranges::move(whole.TakeRest(), std::back_inserter(lines));
  Wifid::LineCutter cutter;
  std::vector<std::string> pieces;
  for (std::size_t start = 0; start < text.size(); start += piece) {
    std::ranges::move(cutter.Take(std::string_view(text).substr(start, piece)), std::back_inserter(pieces));
  }
  std::ranges::move(cutter.TakeRest(), std::back_inserter(pieces));
  Require(pieces == lines, "lines are the same in whatever pieces they come");
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  const Fuzz::TwoTexts input(data, size);
  for (const std::string& answer : {input.first, input.second}) {
    Fuzz::ReadScan(answer);
    Fuzz::ReadWords(answer);
    Fuzz::ReadEvent(answer);
  }
  const auto upstream = TALO::Wifid::ReadUpstream(input.first, input.second);
  Fuzz::Require(upstream.ssid.size() <= input.first.size(), "the SSID is one of the answer");
  Fuzz::CutLines(std::string(reinterpret_cast<const char*>(data), size), 1 + size % 7);
  return 0;
}
