#pragma once

// Values in which everything is set: every member of a record, at any depth, differs from its default, and
// containers hold two elements. Texts are longer than ASCII, bytes are not UTF-8 and hold NUL.

#include "client/record_members.h"

#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Wifi {

template <typename T>
T FullValue();

/// Fills values one after the other; no two numbers or texts that it gives are the same.
class Filler {
 public:
  void Fill(bool& value) { value = !value; }
  void Fill(int& value) { value = 1000 + ++count_; }
  void Fill(std::string& text) { text = "text " + std::to_string(++count_) + " \xC3\xA9\xE2\x82\xAC"; }
  void FillBytes(std::string& bytes) { bytes = std::string("\xFF\0\xC3 ", 4) + std::to_string(++count_); }

  void Fill(Util::MACAddress& address) {
    std::array<char, 18> text{};
    ++count_;
    std::snprintf(text.data(), text.size(), "02:00:00:00:%02x:%02x", (count_ >> 8) & 0xFF, count_ & 0xFF);
    address = Util::MACAddress(text.data());
  }

  template <typename E>
  requires std::is_enum_v<E>
  void Fill(E& value) {
    const E before = value;
    do {
      value = static_cast<E>(++count_ % 3);
    } while (value == before);
  }

  template <typename T>
  void Fill(std::vector<T>& values) {
    while (values.size() < 2) {
      Fill(values.emplace_back());
    }
  }

  template <typename T>
  void Fill(std::set<T>& values) {
    while (values.size() < 2) {
      values.insert(FullUnlessIn<T>(values));
    }
  }

  template <typename Key, typename T>
  void Fill(std::map<Key, T>& map) {
    while (map.size() < 2) {
      Key key = FullUnlessIn<Key>(map);
      map.emplace(std::move(key), Full<T>());
    }
  }

  template <Record T>
  void Fill(T& record) {
    ForEachMember(record, [this](auto member, auto& value) {
      if constexpr (decltype(member)::kind != TextKind::Text) {
        FillBytes(value);
      } else {
        Fill(value);
      }
    });
  }

  template <typename... T>
  void Fill(std::tuple<T...>& values) {
    std::apply([this](T&... each) { (Fill(each), ...); }, values);
  }

  template <typename T>
  T Full() {
    T value{};
    Fill(value);
    return value;
  }

 private:
  template <typename T, typename Container>
  T FullUnlessIn(const Container& container) {
    T value = Full<T>();
    while (container.contains(value)) {
      Fill(value);
    }
    return value;
  }

  int count_ = 0;
};

template <typename T>
T FullValue() {
  return Filler().Full<T>();
}

}  // namespace TALO::Wifi
