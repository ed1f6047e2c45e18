#include "daemon/json/record_json.h"

#include <json/reader.h>

#include <algorithm>
#include <charconv>
#include <memory>

namespace TALO::Wifid {

namespace {

/// The reader's message is "* Line 3, Column 7" and a line about the text there, which may quote it.
std::string PositionIn(const std::string& message) {
  constexpr std::string_view kMark = "* Line ";
  const std::size_t start = message.find(kMark);
  const std::size_t end = message.find('\n', start);
  if (start == std::string::npos || end == std::string::npos) {
    return {};
  }
  std::string position = message.substr(start + kMark.size(), end - start - kMark.size());
  const std::size_t column = position.find("Column");
  if (column != std::string::npos) {
    position[column] = 'c';
  }
  return " (line " + position + ")";
}

/// What somebody wrote as a member's name, on one line and readable.
std::string ReadableKey(const std::string& key) {
  const auto isPlain = [](char c) { return c > ' ' && c <= '~' && c != '"' && c != '\\'; };
  if (!key.empty() && std::ranges::all_of(key, isPlain)) {
    return key;
  }
  std::string text = "\"";
  for (const char c : key) {
    if (c == ' ' || isPlain(c)) {
      text += c;
    } else {
      text += "\\x" + Wifi::ToHex(std::string_view(&c, 1));
    }
  }
  return text + "\"";
}

}  // namespace

Json::Value ParseJson(const std::string& text) {
  // The reader takes a NUL between values for the end and never looks at what follows it.
  if (const std::size_t nul = text.find('\0'); nul != std::string::npos) {
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(nul), '\n') + 1;
    const std::size_t lineEnd = text.rfind('\n', nul);
    const std::size_t column = nul - (lineEnd == std::string::npos ? 0 : lineEnd + 1) + 1;
    throw FormError("it is not JSON (line " + std::to_string(line) + ", column " + std::to_string(column) +
                    ")");
  }
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder.settings_["skipBom"] = false;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  try {
    if (reader->parse(text.data(), text.data() + text.size(), &root, &errors)) {
      return root;
    }
  } catch (const Json::Exception&) {
    throw FormError("it is nested too deeply");
  }
  throw FormError("it is not JSON" + PositionIn(errors));
}

namespace RecordJson {

void Fail(const std::string& where, const std::string& what) {
  throw FormError((where.empty() ? "it" : where) + " " + what);
}

std::string MemberPath(const std::string& where, const std::string& key) {
  return where.empty() ? ReadableKey(key) : where + "." + ReadableKey(key);
}

std::string ElementPath(const std::string& where, std::size_t index) {
  return where + "[" + std::to_string(index) + "]";
}

std::string DecodeHex(const std::string& digits, const std::string& where) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  if (digits.size() % 2 != 0 || digits.find_first_not_of(kDigits) != std::string::npos) {
    Fail(where, "is not made of pairs of the digits 0 to 9 and a to f");
  }
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes += static_cast<char>(kDigits.find(digits[i]) * 16 + kDigits.find(digits[i + 1]));
  }
  return bytes;
}

std::string DecodeText(const Json::Value& json, const std::string& where) {
  if (!json.isString()) {
    Fail(where, "is not a text");
  }
  std::string text = json.asString();
  // The reader lets every byte through, and the bus does not.
  if (!Wifi::IsUTF8(text)) {
    Fail(where, "is not UTF-8");
  }
  return text;
}

namespace {

/// The reader makes a floating point number of a whole one that is out of range, which is rounded then.
bool IsWholeNumber(const Json::Value& json) {
  return json.type() == Json::intValue || json.type() == Json::uintValue;
}

}  // namespace

int DecodeInt(const Json::Value& json, const std::string& where) {
  if (!IsWholeNumber(json) || !json.isInt()) {
    Fail(where, "is not a whole number in range");
  }
  return json.asInt();
}

std::int64_t DecodeInt64(const Json::Value& json, const std::string& where) {
  if (!IsWholeNumber(json) || !json.isInt64()) {
    Fail(where, "is not a whole number in range");
  }
  return json.asInt64();
}

bool DecodeBool(const Json::Value& json, const std::string& where) {
  if (!json.isBool()) {
    Fail(where, "is neither true nor false");
  }
  return json.asBool();
}

Wifi::Util::MACAddress DecodeMACAddress(const std::string& text, const std::string& where) {
  try {
    return Wifi::Util::MACAddress(text);
  } catch (const std::invalid_argument&) {
    Fail(where, "is not a MAC address");
  }
}

int DecodeIntKey(const std::string& key, const std::string& where) {
  int number = 0;
  const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
  if (error != std::errc() || end != key.data() + key.size() || std::to_string(number) != key) {
    Fail(where, "is named by something else than a whole number in range");
  }
  return number;
}

void RequireList(const Json::Value& json, const std::string& where) {
  if (!json.isArray()) {
    Fail(where, "is not a list");
  }
}

void RequireObject(const Json::Value& json, const std::string& where) {
  if (!json.isObject()) {
    Fail(where, "is not an object");
  }
}

void RefuseUnknownMembers(const Json::Value& json, const std::set<std::string>& known,
                          const std::string& where) {
  for (const std::string& name : json.getMemberNames()) {
    if (!known.contains(name)) {
      Fail(MemberPath(where, name), "is unknown");
    }
  }
}

}  // namespace RecordJson

}  // namespace TALO::Wifid
