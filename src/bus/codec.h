#pragma once

// How C++ values travel: one codec a type, and every record's made from its list of members. A codec has a
// signature, appends a value to a message and reads one from it; both directions throw CodecError.

#include "bus/fixed_string.h"
#include "bus/message.h"
#include "client/record_members.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Wifi::Bus {

template <typename T>
struct Codec;

// The basic types, defined in codec.cpp.

template <>
struct Codec<bool> {
  static constexpr FixedString signature = "b";
  static void Append(sd_bus_message* message, bool value);
  static bool Read(sd_bus_message* message);
};

template <>
struct Codec<std::int32_t> {
  static constexpr FixedString signature = "i";
  static void Append(sd_bus_message* message, std::int32_t value);
  static std::int32_t Read(sd_bus_message* message);
};

template <>
struct Codec<std::uint16_t> {
  static constexpr FixedString signature = "q";
  static void Append(sd_bus_message* message, std::uint16_t value);
  static std::uint16_t Read(sd_bus_message* message);
};

/// Text: UTF-8 without NUL and noncharacters. Append throws InvalidText for anything else.
template <>
struct Codec<std::string> {
  static constexpr FixedString signature = "s";
  static void Append(sd_bus_message* message, const std::string& text);
  static std::string Read(sd_bus_message* message);
};

template <>
struct Codec<Util::MACAddress> {
  static constexpr FixedString signature = "s";
  static void Append(sd_bus_message* message, const Util::MACAddress& address);
  static Util::MACAddress Read(sd_bus_message* message);
};

/// Any bytes, for the members that hold them.
struct BytesCodec {
  static constexpr FixedString signature = "ay";
  static void Append(sd_bus_message* message, const std::string& bytes);
  static std::string Read(sd_bus_message* message);
};

/// Opens a container for writing and closes it.
void OpenContainer(sd_bus_message* message, char type, const char* contents);
void CloseContainer(sd_bus_message* message);
/// Enters a container; false where none is left.
bool EnterContainer(sd_bus_message* message, char type, const char* contents);
void ExitContainer(sd_bus_message* message);

/// Enumerations travel as their numbers; one without a name is for the reader to judge.
template <typename E>
requires std::is_enum_v<E>
struct Codec<E> {
  using Number = std::underlying_type_t<E>;
  static constexpr auto signature = Codec<Number>::signature;
  static void Append(sd_bus_message* message, E value) {
    Codec<Number>::Append(message, static_cast<Number>(value));
  }
  static E Read(sd_bus_message* message) { return static_cast<E>(Codec<Number>::Read(message)); }
};

template <typename Container, typename Element>
struct ArrayCodec {
  static constexpr auto contents = Codec<Element>::signature;
  static constexpr auto signature = FixedString("a") + contents;

  static void Append(sd_bus_message* message, const Container& container) {
    OpenContainer(message, SD_BUS_TYPE_ARRAY, contents.text);
    for (const Element& element : container) {
      Codec<Element>::Append(message, element);
    }
    CloseContainer(message);
  }

  static Container Read(sd_bus_message* message) {
    Container container;
    if (!EnterContainer(message, SD_BUS_TYPE_ARRAY, contents.text)) {
      throw CodecError("an array is missing");
    }
    while (CheckMessage(sd_bus_message_at_end(message, 0)) == 0) {
      container.insert(container.end(), Codec<Element>::Read(message));
    }
    ExitContainer(message);
    return container;
  }
};

template <typename T>
struct Codec<std::vector<T>> : ArrayCodec<std::vector<T>, T> {};
template <typename T>
struct Codec<std::set<T>> : ArrayCodec<std::set<T>, T> {};

template <typename Key, typename T>
struct Codec<std::map<Key, T>> {
  static constexpr auto entry = Codec<Key>::signature + Codec<T>::signature;
  static constexpr auto contents = FixedString("{") + entry + FixedString("}");
  static constexpr auto signature = FixedString("a") + contents;

  static void Append(sd_bus_message* message, const std::map<Key, T>& map) {
    OpenContainer(message, SD_BUS_TYPE_ARRAY, contents.text);
    for (const auto& [key, value] : map) {
      OpenContainer(message, SD_BUS_TYPE_DICT_ENTRY, entry.text);
      Codec<Key>::Append(message, key);
      Codec<T>::Append(message, value);
      CloseContainer(message);
    }
    CloseContainer(message);
  }

  static std::map<Key, T> Read(sd_bus_message* message) {
    std::map<Key, T> map;
    if (!EnterContainer(message, SD_BUS_TYPE_ARRAY, contents.text)) {
      throw CodecError("a dictionary is missing");
    }
    while (EnterContainer(message, SD_BUS_TYPE_DICT_ENTRY, entry.text)) {
      Key key = Codec<Key>::Read(message);
      map.insert_or_assign(std::move(key), Codec<T>::Read(message));
      ExitContainer(message);
    }
    ExitContainer(message);
    return map;
  }
};

/// The codec of a record's member: that of its type, but bytes for a text that may hold any.
template <typename M>
using CodecOf = std::conditional_t<M::kind == TextKind::Text, Codec<typename M::Type>, BytesCodec>;

template <Record T>
struct Codec<T> {
  static constexpr auto contents = FoldMembers<T>(
      FixedString<0>{}, [](auto sum, auto member) { return sum + CodecOf<decltype(member)>::signature; });
  static constexpr auto signature = FixedString("(") + contents + FixedString(")");

  static void Append(sd_bus_message* message, const T& record) {
    OpenContainer(message, SD_BUS_TYPE_STRUCT, contents.text);
    ForEachMember(record, [message](auto member, const auto& value) {
      CodecOf<decltype(member)>::Append(message, value);
    });
    CloseContainer(message);
  }

  static T Read(sd_bus_message* message) {
    if (!EnterContainer(message, SD_BUS_TYPE_STRUCT, contents.text)) {
      throw CodecError("a structure is missing");
    }
    T record;
    ForEachMember(record,
                  [message](auto member, auto& value) { value = CodecOf<decltype(member)>::Read(message); });
    ExitContainer(message);
    return record;
  }
};

/// Whether a value of this type can hold a passphrase or key anywhere; such messages are marked sensitive.
template <typename T>
struct HoldsSecret : std::false_type {};
template <typename T>
struct HoldsSecret<std::vector<T>> : HoldsSecret<T> {};
template <typename Key, typename T>
struct HoldsSecret<std::map<Key, T>> : HoldsSecret<T> {};
template <Record T>
struct HoldsSecret<T> {
  static constexpr bool value = FoldMembers<T>(false, [](bool found, auto member) {
    using M = decltype(member);
    return found || M::kind == TextKind::Secret || HoldsSecret<typename M::Type>::value;
  });
};

/// The arguments of a call, one after the other.
template <typename... Arguments>
struct ArgumentsCodec {
  static constexpr auto signature = (FixedString<0>{} + ... + Codec<Arguments>::signature);
  static constexpr bool holdsSecret = (false || ... || HoldsSecret<Arguments>::value);

  static void Append([[maybe_unused]] sd_bus_message* message, const Arguments&... arguments) {
    (Codec<Arguments>::Append(message, arguments), ...);
  }

  static std::tuple<Arguments...> Read([[maybe_unused]] sd_bus_message* message) {
    // A braced list, so that they are read in their order.
    return std::tuple<Arguments...>{Codec<Arguments>::Read(message)...};
  }
};

/// The result of a call, or nothing.
template <typename Result>
struct ResultCodec : ArgumentsCodec<Result> {
  static Result Read(sd_bus_message* message) { return Codec<Result>::Read(message); }
};
template <>
struct ResultCodec<void> : ArgumentsCodec<> {
  static void Read(sd_bus_message*) {}
};

}  // namespace TALO::Wifi::Bus
