#include "attack/random_values.h"

#include "bus/message.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

namespace TALO::Attack {

using Wifi::Bus::CheckMessage;

namespace {

constexpr int kDeepest = 4;
constexpr std::string_view kBasic = "ybnqiuxtdsog";

std::string RandomType(Random& random, int depth) {
  const int kind = Pick(random, depth >= kDeepest ? 1 : 4);
  const std::string basic(1, kBasic[static_cast<std::size_t>(Pick(random, static_cast<int>(kBasic.size())))]);
  switch (kind) {
    case 1:
      return "a" + RandomType(random, depth + 1);
    case 2:
      return "(" + RandomType(random, depth + 1) + RandomType(random, depth + 1) + ")";
    case 3:
      return Pick(random, 2) == 0 ? "v" : "a{" + basic + RandomType(random, depth + 1) + "}";
    default:
      return basic;
  }
}

/// The length of the complete type that `types` begins with.
std::size_t LengthOfFirst(std::string_view types) {
  if (types.front() == 'a') {
    return 1 + LengthOfFirst(types.substr(1));
  }
  if (types.front() != '(' && types.front() != '{') {
    return 1;
  }
  std::size_t length = 1;
  while (types[length] != ')' && types[length] != '}') {
    length += LengthOfFirst(types.substr(length));
  }
  return length + 1;
}

std::string RandomText(Random& random, Size size) {
  static const std::array<std::string, 12> kTexts = {"",
                                                     "a",
                                                     "Home",
                                                     "correct-horse",
                                                     "00:11:22:33:44:55",
                                                     "0a:00:00:00:00:01",
                                                     "wlan0_1",
                                                     "br0",
                                                     "\xef\xbf\xbd\xe2\x80\xae",
                                                     "line\nbreak=1\n",
                                                     "..\\/../\"'`$(reboot)%s%n",
                                                     "\xf0\x9f\x98\x80"};
  if (size == Size::Huge) {
    return std::string(static_cast<std::size_t>(1 + Pick(random, 1 << 20)), 'x');
  }
  const int which = Pick(random, static_cast<int>(kTexts.size()) + 2);
  if (which < static_cast<int>(kTexts.size())) {
    return kTexts[static_cast<std::size_t>(which)];
  }
  return std::string(static_cast<std::size_t>(Pick(random, 80)), static_cast<char>('!' + Pick(random, 90)));
}

std::int64_t RandomNumber(Random& random) {
  static const std::array<std::int64_t, 8> kLimits = {0,
                                                      1,
                                                      -1,
                                                      7,
                                                      std::numeric_limits<std::int32_t>::max(),
                                                      std::numeric_limits<std::int32_t>::min(),
                                                      std::numeric_limits<std::int64_t>::max(),
                                                      std::numeric_limits<std::int64_t>::min()};
  const int which = Pick(random, static_cast<int>(kLimits.size()) * 2);
  return which < static_cast<int>(kLimits.size()) ? kLimits[static_cast<std::size_t>(which)]
                                                  : Pick(random, 40);
}

void AppendBasic(sd_bus_message* message, char type, Random& random, Size size) {
  const std::int64_t number = RandomNumber(random);
  switch (type) {
    case 's':
      CheckMessage(sd_bus_message_append(message, "s", RandomText(random, size).c_str()));
      return;
    case 'o':
      CheckMessage(sd_bus_message_append(message, "o", Pick(random, 2) == 0 ? "/" : "/com/talo/Wifi1"));
      return;
    case 'g':
      CheckMessage(sd_bus_message_append(message, "g", Pick(random, 2) == 0 ? "" : "a(isas)"));
      return;
    case 'b': {
      const int truth = Pick(random, 2);
      CheckMessage(sd_bus_message_append_basic(message, type, &truth));
      return;
    }
    case 'd': {
      const double value = static_cast<double>(number);
      CheckMessage(sd_bus_message_append_basic(message, type, &value));
      return;
    }
    default:
      // A number of any width begins with its lowest byte.
      CheckMessage(sd_bus_message_append_basic(message, type, &number));
  }
}

int RandomCount(const std::string& element, Random& random, Size size) {
  if (size == Size::Any) {
    return Pick(random, 4);
  }
  // Long lists of short values, or few long texts.
  return element.find_first_of("s(a{v") == std::string::npos ? Pick(random, 200000) : 1 + Pick(random, 6);
}

void AppendOne(sd_bus_message* message, const std::string& type, Random& random, Size size);

void AppendContents(sd_bus_message* message, char container, const std::string& contents, Random& random,
                    Size size) {
  CheckMessage(sd_bus_message_open_container(message, container, contents.c_str()));
  const int count = container == SD_BUS_TYPE_ARRAY ? RandomCount(contents, random, size) : 1;
  for (int i = 0; i < count; ++i) {
    AppendRandom(message, contents, random, size);
  }
  CheckMessage(sd_bus_message_close_container(message));
}

void AppendOne(sd_bus_message* message, const std::string& type, Random& random, Size size) {
  switch (type.front()) {
    case 'a':
      AppendContents(message, SD_BUS_TYPE_ARRAY, type.substr(1), random, size);
      return;
    case '(':
      AppendContents(message, SD_BUS_TYPE_STRUCT, type.substr(1, type.size() - 2), random, size);
      return;
    case '{':
      AppendContents(message, SD_BUS_TYPE_DICT_ENTRY, type.substr(1, type.size() - 2), random, size);
      return;
    case 'v':
      AppendContents(message, SD_BUS_TYPE_VARIANT,
                     std::string(1, kBasic[static_cast<std::size_t>(Pick(random, 12))]), random, size);
      return;
    default:
      AppendBasic(message, type.front(), random, size);
  }
}

}  // namespace

int Pick(Random& random, int count) { return std::uniform_int_distribution(0, count - 1)(random); }

std::string RandomSignature(Random& random) {
  std::string signature;
  for (int types = Pick(random, 4); types > 0; --types) {
    signature += RandomType(random, 0);
  }
  return signature;
}

void AppendRandom(sd_bus_message* message, const std::string& signature, Random& random, Size size) {
  for (std::size_t at = 0; at < signature.size();) {
    const std::size_t length = LengthOfFirst(std::string_view(signature).substr(at));
    AppendOne(message, signature.substr(at, length), random, size);
    at += length;
  }
}

void AppendNested(sd_bus_message* message) {
  constexpr int kDepth = 60;
  for (int depth = 0; depth < kDepth; ++depth) {
    CheckMessage(sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "v"));
  }
  CheckMessage(sd_bus_message_append(message, "v", "s", "the bottom"));
  for (int depth = 0; depth < kDepth; ++depth) {
    CheckMessage(sd_bus_message_close_container(message));
  }
}

}  // namespace TALO::Attack
