#include "daemon/radio/linux/control/messages.h"

#include "daemon/radio/linux/control/words.h"

#include <cstddef>
#include <string_view>

namespace TALO::Wifid {

namespace {

/// Up to the next `end`, which is taken off the text and belongs to neither.
std::string_view TakeUpTo(std::string_view& text, char end) {
  const std::size_t length = text.find(end);
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
  return taken;
}

/// How long the word is that the text begins with. Spaces between quotes do not end it; a quote behind a
/// backslash is none.
std::size_t WordLength(std::string_view text) {
  bool isQuoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ' && !isQuoted) {
      return i;
    }
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      isQuoted = !isQuoted;
    }
  }
  return text.size();
}

std::string_view WithoutQuotes(std::string_view value) {
  if (value.size() >= 2 && value.starts_with('"') && value.ends_with('"')) {
    return value.substr(1, value.size() - 2);
  }
  return value.ends_with(']') ? value.substr(0, value.size() - 1) : value;
}

void ReadWord(std::string_view word, ControlMessage& message) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) {
    message.words.emplace_back(word);
    return;
  }
  std::string_view key = word.substr(0, equals);
  if (key.starts_with('[')) {
    key.remove_prefix(1);
  }
  message.fields.emplace(key, WithoutQuotes(word.substr(equals + 1)));
}

/// Takes the importance off, as in "<3>"; false where there is none.
bool TakeLevel(std::string_view& text) {
  if (!text.starts_with('<')) {
    return false;
  }
  text.remove_prefix(1);
  const std::size_t length = text.find('>');
  if (length == std::string_view::npos || !ReadNumber(text.substr(0, length))) {
    return false;
  }
  text.remove_prefix(length + 1);
  return true;
}

}  // namespace

std::optional<Wifi::Util::MACAddress> ControlMessage::Address() const {
  for (const std::string& word : words) {
    if (auto address = ReadAddress(word)) {
      return address;
    }
  }
  return std::nullopt;
}

std::optional<ControlMessage> ReadMessage(const std::string& datagram) {
  constexpr std::string_view kPrefix = "IFNAME=";
  std::string_view rest = datagram;
  ControlMessage message;
  if (rest.starts_with(kPrefix)) {
    rest.remove_prefix(kPrefix.size());
    message.interface = TakeUpTo(rest, ' ');
  }
  if (!TakeLevel(rest)) {
    return std::nullopt;
  }
  message.name = TakeUpTo(rest, ' ');
  if (message.name.empty()) {
    return std::nullopt;
  }
  while (!rest.empty()) {
    const std::string_view word = rest.substr(0, WordLength(rest));
    if (!word.empty()) {
      ReadWord(word, message);
    }
    rest.remove_prefix(word.size() == rest.size() ? word.size() : word.size() + 1);
  }
  return message;
}

}  // namespace TALO::Wifid
