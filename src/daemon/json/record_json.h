#pragma once

// Described records as JSON, both ways. Header-only where it walks a record's members: whoever includes it
// brings the description of its own records.

#include "client/bytes.h"
#include "client/record_members.h"
#include "values/enum_names.h"
#include "values/errors.h"

#include <json/value.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace TALO::Wifid {

/// How a record stands in JSON. In both forms a member that the record does not have is refused, enumerations
/// stand by name, MAC addresses as aa:bb:cc:dd:ee:ff, an optional value that is not there as null, maps as
/// objects and sets as lists.
enum class RecordForm {
  /// Made and read by programs: every member is there; bytes and secrets stand as hexadecimal digits under
  /// the member's name and "Hex". An enumeration's value without a name stands as its number, so that writing
  /// never fails and what was written is read again.
  Exact,
  /// Written by people: what is left out keeps the record's default; bytes and secrets stand as text under
  /// the member's name, or as hexadecimal digits under the name and "Hex".
  Handwritten,
};

/// A text or value is not of the form of the record. The sentence names the member, as in
/// `networks[2].id is missing`. It is one line and holds no value of a member.
class FormError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The value that a JSON text stands for; FormError with the position for a text that is not strictly JSON.
Json::Value ParseJson(const std::string& text);

namespace RecordJson {

[[noreturn]] void Fail(const std::string& where, const std::string& what);
std::string MemberPath(const std::string& where, const std::string& key);
std::string ElementPath(const std::string& where, std::size_t index);
std::string DecodeHex(const std::string& digits, const std::string& where);
std::string DecodeText(const Json::Value& json, const std::string& where);
int DecodeInt(const Json::Value& json, const std::string& where);
std::int64_t DecodeInt64(const Json::Value& json, const std::string& where);
bool DecodeBool(const Json::Value& json, const std::string& where);
Wifi::Util::MACAddress DecodeMACAddress(const std::string& text, const std::string& where);
/// The number that a map's key stands for, written as std::to_string writes it.
int DecodeIntKey(const std::string& key, const std::string& where);
void RequireList(const Json::Value& json, const std::string& where);
void RequireObject(const Json::Value& json, const std::string& where);
void RefuseUnknownMembers(const Json::Value& json, const std::set<std::string>& known,
                          const std::string& where);

inline std::string HexName(const char* name) { return std::string(name) + "Hex"; }

// Writing, in the exact form.

inline Json::Value ToJson(bool value) { return value; }
inline Json::Value ToJson(int value) { return value; }
inline Json::Value ToJson(std::int64_t value) { return static_cast<Json::Int64>(value); }
inline Json::Value ToJson(const std::string& text) { return text; }
inline Json::Value ToJson(const Wifi::Util::MACAddress& address) { return address.ToString(); }

template <Wifi::Util::NamedEnum E>
Json::Value ToJson(E value) {
  const std::string_view name = Wifi::Util::FindEnumName(value);
  return name.empty() ? Json::Value(static_cast<int>(value)) : Json::Value(std::string(name));
}

template <Wifi::Record T>
Json::Value ToJson(const T& record);
template <typename T>
Json::Value ToJson(const std::vector<T>& values);
template <typename T>
Json::Value ToJson(const std::set<T>& values);
template <typename Key, typename T>
Json::Value ToJson(const std::map<Key, T>& map);
template <typename T>
Json::Value ToJson(const std::optional<T>& value);

template <typename Container>
Json::Value ListToJson(const Container& values) {
  Json::Value array(Json::arrayValue);
  for (const auto& value : values) {
    array.append(ToJson(value));
  }
  return array;
}

template <typename T>
Json::Value ToJson(const std::vector<T>& values) {
  return ListToJson(values);
}

template <typename T>
Json::Value ToJson(const std::set<T>& values) {
  return ListToJson(values);
}

template <typename Key, typename T>
Json::Value ToJson(const std::map<Key, T>& map) {
  Json::Value object(Json::objectValue);
  for (const auto& [key, value] : map) {
    object[ToJson(key).asString()] = ToJson(value);
  }
  return object;
}

template <typename T>
Json::Value ToJson(const std::optional<T>& value) {
  return value ? ToJson(*value) : Json::Value();
}

template <Wifi::Record T>
Json::Value ToJson(const T& record) {
  Json::Value object(Json::objectValue);
  Wifi::ForEachMember(record, [&object](auto member, const auto& value) {
    using M = decltype(member);
    if constexpr (M::kind == Wifi::TextKind::Text) {
      object[M::name] = ToJson(value);
    } else {
      object[HexName(M::name)] = Wifi::ToHex(value);
    }
  });
  return object;
}

// Reading, into a value that holds its default. `where` names the member for the sentence.

template <RecordForm form>
struct Reader {
  static void Read(const Json::Value& json, const std::string& where, bool& value) {
    value = DecodeBool(json, where);
  }
  static void Read(const Json::Value& json, const std::string& where, int& value) {
    value = DecodeInt(json, where);
  }
  static void Read(const Json::Value& json, const std::string& where, std::int64_t& value) {
    value = DecodeInt64(json, where);
  }
  static void Read(const Json::Value& json, const std::string& where, std::string& value) {
    value = DecodeText(json, where);
  }
  static void Read(const Json::Value& json, const std::string& where, Wifi::Util::MACAddress& value) {
    value = DecodeMACAddress(DecodeText(json, where), where);
  }

  template <Wifi::Util::NamedEnum E>
  static E FromName(const std::string& name, const std::string& where) {
    try {
      return Wifi::Util::EnumFromName<E>(name);
    } catch (const Wifi::RuntimeError&) {
      Fail(where, "is an unknown word");
    }
  }

  /// Only for what has no name: every value stands in one way.
  template <Wifi::Util::NamedEnum E>
  static E FromNumber(int number, const std::string& where) {
    const auto value = static_cast<E>(number);
    if (static_cast<int>(value) != number || !Wifi::Util::FindEnumName(value).empty()) {
      Fail(where, "is a number where a word is due");
    }
    return value;
  }

  template <Wifi::Util::NamedEnum E>
  static void Read(const Json::Value& json, const std::string& where, E& value) {
    if constexpr (form == RecordForm::Exact) {
      if (json.isInt()) {
        value = FromNumber<E>(DecodeInt(json, where), where);
        return;
      }
    }
    value = FromName<E>(DecodeText(json, where), where);
  }

  template <typename T>
  static void Read(const Json::Value& json, const std::string& where, std::vector<T>& values) {
    RequireList(json, where);
    values.clear();
    for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
      T value{};
      Read(json[i], ElementPath(where, i), value);
      values.push_back(std::move(value));
    }
  }

  template <typename T>
  static void Read(const Json::Value& json, const std::string& where, std::set<T>& values) {
    RequireList(json, where);
    values.clear();
    for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
      T value{};
      Read(json[i], ElementPath(where, i), value);
      if (!values.insert(std::move(value)).second) {
        Fail(ElementPath(where, i), "is listed twice");
      }
    }
  }

  static void ReadKey(const std::string& key, const std::string&, std::string& value) { value = key; }
  static void ReadKey(const std::string& key, const std::string& where, int& value) {
    value = DecodeIntKey(key, where);
  }
  static void ReadKey(const std::string& key, const std::string& where, Wifi::Util::MACAddress& value) {
    value = DecodeMACAddress(key, where);
  }
  template <Wifi::Util::NamedEnum E>
  static void ReadKey(const std::string& key, const std::string& where, E& value) {
    if constexpr (form == RecordForm::Exact) {
      if (!key.empty() && key.find_first_not_of("-0123456789") == std::string::npos) {
        value = FromNumber<E>(DecodeIntKey(key, where), where);
        return;
      }
    }
    value = FromName<E>(key, where);
  }

  template <typename Key, typename T>
  static void Read(const Json::Value& json, const std::string& where, std::map<Key, T>& map) {
    RequireObject(json, where);
    map.clear();
    for (const std::string& name : json.getMemberNames()) {
      const std::string path = MemberPath(where, name);
      Key key{};
      ReadKey(name, path, key);
      T value{};
      Read(json[name], path, value);
      // Two spellings of one MAC address are the same key.
      if (!map.emplace(std::move(key), std::move(value)).second) {
        Fail(path, "is listed twice");
      }
    }
  }

  template <typename T>
  static void Read(const Json::Value& json, const std::string& where, std::optional<T>& value) {
    if (json.isNull()) {
      value.reset();
      return;
    }
    Read(json, where, value.emplace());
  }

  template <Wifi::Record T>
  static void Read(const Json::Value& json, const std::string& where, T& record) {
    RequireObject(json, where);
    std::set<std::string> known;
    Wifi::ForEachMember(record, [&](auto member, auto& value) {
      using M = decltype(member);
      if constexpr (M::kind == Wifi::TextKind::Text) {
        known.insert(M::name);
        ReadMember(json, M::name, where, value);
      } else {
        known.insert(HexName(M::name));
        if constexpr (form == RecordForm::Handwritten) {
          known.insert(M::name);
        }
        ReadBytes(json, M::name, where, value);
      }
    });
    RefuseUnknownMembers(json, known, where);
  }

  template <typename T>
  static void ReadMember(const Json::Value& json, const char* name, const std::string& where, T& value) {
    if (json.isMember(name)) {
      Read(json[name], MemberPath(where, name), value);
    } else if constexpr (form == RecordForm::Exact) {
      Fail(MemberPath(where, name), "is missing");
    }
  }

  static void ReadBytes(const Json::Value& json, const char* name, const std::string& where,
                        std::string& value) {
    const std::string hexName = HexName(name);
    const std::string hexPath = MemberPath(where, hexName);
    if (form == RecordForm::Exact && !json.isMember(hexName)) {
      Fail(hexPath, "is missing");
    }
    if (json.isMember(hexName)) {
      if (form == RecordForm::Handwritten && json.isMember(name)) {
        Fail(hexPath, std::string("and ") + name + " exclude each other");
      }
      value = DecodeHex(DecodeText(json[hexName], hexPath), hexPath);
    } else if (json.isMember(name)) {
      value = DecodeText(json[name], MemberPath(where, name));
    }
  }
};

}  // namespace RecordJson

/// A record in the exact form. Never fails but for want of memory.
template <Wifi::Record T>
Json::Value EncodeRecord(const T& record) {
  return RecordJson::ToJson(record);
}

/// The record that `json` stands for; FormError for one that is not of the form.
template <Wifi::Record T, RecordForm form>
T DecodeRecord(const Json::Value& json) {
  T record;
  RecordJson::Reader<form>::Read(json, "", record);
  return record;
}

}  // namespace TALO::Wifid
