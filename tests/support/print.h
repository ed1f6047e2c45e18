#pragma once

// Prints records and containers of them for failing tests and for the fake daemon's list of calls:
// {id=7, ssid="Home"}. Bytes that are not printable ASCII appear as \xNN.

#include "client/record_members.h"
#include "values/enum_names.h"

#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace TALO::Wifi {

namespace Printing {

void PrintText(std::ostream& out, const std::string& text);

template <typename T>
void Print(std::ostream& out, const T& value);

template <typename Container>
void PrintElements(std::ostream& out, const Container& container) {
  out << "[";
  const char* separator = "";
  for (const auto& element : container) {
    out << separator;
    separator = ", ";
    Print(out, element);
  }
  out << "]";
}

template <typename T>
struct Printer {
  static void Print(std::ostream& out, const T& value) { out << value; }
};
template <>
struct Printer<bool> {
  static void Print(std::ostream& out, bool value) { out << (value ? "true" : "false"); }
};
template <>
struct Printer<std::string> {
  static void Print(std::ostream& out, const std::string& text) { PrintText(out, text); }
};
template <>
struct Printer<Util::MACAddress> {
  static void Print(std::ostream& out, const Util::MACAddress& address) { out << address.ToString(); }
};
template <Util::NamedEnum E>
struct Printer<E> {
  static void Print(std::ostream& out, E value) {
    const auto name = Util::FindEnumName(value);
    if (name.empty()) {
      out << static_cast<int>(value);
    } else {
      out << name;
    }
  }
};
template <typename T>
struct Printer<std::vector<T>> {
  static void Print(std::ostream& out, const std::vector<T>& values) { PrintElements(out, values); }
};
template <typename T>
struct Printer<std::set<T>> {
  static void Print(std::ostream& out, const std::set<T>& values) { PrintElements(out, values); }
};
template <typename Key, typename T>
struct Printer<std::map<Key, T>> {
  static void Print(std::ostream& out, const std::map<Key, T>& map) { PrintElements(out, map); }
};
template <typename First, typename Second>
struct Printer<std::pair<First, Second>> {
  static void Print(std::ostream& out, const std::pair<First, Second>& pair) {
    Printing::Print(out, pair.first);
    out << ": ";
    Printing::Print(out, pair.second);
  }
};
template <Record T>
struct Printer<T> {
  static void Print(std::ostream& out, const T& record) {
    out << "{";
    const char* separator = "";
    ForEachMember(record, [&](auto member, const auto& value) {
      out << separator << member.name << "=";
      separator = ", ";
      Printing::Print(out, value);
    });
    out << "}";
  }
};

template <typename T>
void Print(std::ostream& out, const T& value) {
  Printer<T>::Print(out, value);
}

}  // namespace Printing

/// Picked up by GoogleTest.
template <Record T>
void PrintTo(const T& record, std::ostream* out) {
  Printing::Print(*out, record);
}

namespace Util {
inline void PrintTo(const MACAddress& address, std::ostream* out) { *out << address.ToString(); }
}  // namespace Util

}  // namespace TALO::Wifi
