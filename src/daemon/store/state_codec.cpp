#include "daemon/store/state_codec.h"

#include "client/bytes.h"
#include "daemon/model/state_description.h"
#include "values/enum_names.h"

#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

namespace TALO::Wifid {

using Wifi::TextKind;

namespace {

/// The text is not one that EncodeState made.
class FormError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

constexpr const char* kVersionKey = "version";

template <typename M>
std::string KeyOf() {
  return M::kind == TextKind::Text ? std::string(M::name) : std::string(M::name) + "Hex";
}

// Writing.

template <typename T>
Json::Value Encode(const T& value);

template <typename T>
Json::Value EncodeList(const std::vector<T>& values) {
  Json::Value array(Json::arrayValue);
  for (const T& value : values) {
    array.append(Encode(value));
  }
  return array;
}

template <typename T>
struct ListTraits : std::false_type {};
template <typename T>
struct ListTraits<std::vector<T>> : std::true_type {
  using Element = T;
};

template <typename T>
Json::Value EncodeRecord(const T& record) {
  Json::Value object(Json::objectValue);
  Wifi::ForEachMember(record, [&object](auto member, const auto& value) {
    using M = decltype(member);
    if constexpr (M::kind == TextKind::Text) {
      object[KeyOf<M>()] = Encode(value);
    } else {
      object[KeyOf<M>()] = Wifi::ToHex(value);
    }
  });
  return object;
}

template <typename T>
Json::Value Encode(const T& value) {
  if constexpr (Wifi::Record<T>) {
    return EncodeRecord(value);
  } else if constexpr (ListTraits<T>::value) {
    return EncodeList(value);
  } else if constexpr (std::is_enum_v<T>) {
    return Wifi::Util::EnumNameOf(value);
  } else if constexpr (std::is_same_v<T, std::int64_t>) {
    return static_cast<Json::Int64>(value);
  } else {
    return value;
  }
}

// Reading. `where` names the member for the sentence, as in networks[2].id.

[[noreturn]] void Fail(const std::string& where, const std::string& what) {
  throw FormError(where.empty() ? what : where + " " + what);
}

std::string DecodeHex(const std::string& digits, const std::string& where) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  if (digits.size() % 2 != 0 || digits.find_first_not_of(kDigits) != std::string::npos) {
    Fail(where, "is not made of pairs of hexadecimal digits");
  }
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes += static_cast<char>(kDigits.find(digits[i]) * 16 + kDigits.find(digits[i + 1]));
  }
  return bytes;
}

template <typename T>
T Decode(const Json::Value& json, const std::string& where);

template <typename T>
T DecodeEnum(const Json::Value& json, const std::string& where) {
  if (!json.isString()) {
    Fail(where, "is not a text");
  }
  try {
    return Wifi::Util::EnumFromName<T>(json.asString());
  } catch (const Wifi::RuntimeError&) {
    Fail(where, "is an unknown word");
  }
}

template <typename T>
T DecodeList(const Json::Value& json, const std::string& where) {
  if (!json.isArray()) {
    Fail(where, "is not a list");
  }
  T list;
  for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
    list.push_back(Decode<typename ListTraits<T>::Element>(json[i], where + "[" + std::to_string(i) + "]"));
  }
  return list;
}

template <typename T>
T DecodeRecord(const Json::Value& json, const std::string& where) {
  if (!json.isObject()) {
    Fail(where, "is not an object");
  }
  T record;
  Wifi::ForEachMember(record, [&](auto member, auto& value) {
    using M = decltype(member);
    const std::string key = KeyOf<M>();
    const std::string path = where.empty() ? key : where + "." + key;
    if (!json.isMember(key)) {
      Fail(path, "is missing");
    }
    if constexpr (M::kind == TextKind::Text) {
      value = Decode<typename M::Type>(json[key], path);
    } else {
      value = DecodeHex(Decode<std::string>(json[key], path), path);
    }
  });
  return record;
}

template <typename T>
T Decode(const Json::Value& json, const std::string& where) {
  if constexpr (Wifi::Record<T>) {
    return DecodeRecord<T>(json, where);
  } else if constexpr (ListTraits<T>::value) {
    return DecodeList<T>(json, where);
  } else if constexpr (std::is_enum_v<T>) {
    return DecodeEnum<T>(json, where);
  } else if constexpr (std::is_same_v<T, bool>) {
    if (!json.isBool()) {
      Fail(where, "is neither true nor false");
    }
    return json.asBool();
  } else if constexpr (std::is_same_v<T, int>) {
    if (!json.isInt()) {
      Fail(where, "is not a whole number in range");
    }
    return json.asInt();
  } else if constexpr (std::is_same_v<T, std::int64_t>) {
    if (!json.isInt64()) {
      Fail(where, "is not a whole number in range");
    }
    return json.asInt64();
  } else {
    static_assert(std::is_same_v<T, std::string>);
    if (!json.isString()) {
      Fail(where, "is not a text");
    }
    std::string text = json.asString();
    if (!Wifi::IsUTF8(text)) {
      Fail(where, "is not UTF-8");
    }
    return text;
  }
}

Json::Value Parse(const std::string& text) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  // To jsoncpp a text ends at a zero.
  if (text.find('\0') != std::string::npos ||
      !reader->parse(text.data(), text.data() + text.size(), &root, &errors)) {
    throw FormError("it is not JSON");
  }
  return root;
}

}  // namespace

std::string EncodeState(const State& state) {
  Json::Value root = Encode(state);
  root[kVersionKey] = kStateVersion;
  return root.toStyledString();
}

Result<State> DecodeState(const std::string& text) {
  try {
    const Json::Value root = Parse(text);
    if (!root.isObject() || !root[kVersionKey].isInt()) {
      throw FormError("it has no version");
    }
    const int version = root[kVersionKey].asInt();
    if (version != kStateVersion) {
      throw FormError("it is of version " + std::to_string(version) + ", this daemon knows version " +
                      std::to_string(kStateVersion));
    }
    return Decode<State>(root, "");
  } catch (const FormError& error) {
    return Refusal{ErrorCode::StorageFailed, error.what()};
  } catch (const Json::Exception& error) {
    return Refusal{ErrorCode::StorageFailed, error.what()};
  }
}

}  // namespace TALO::Wifid
