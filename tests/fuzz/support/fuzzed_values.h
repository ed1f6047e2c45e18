#pragma once

#include "client/record_members.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Fuzz {

/// Every secret that FuzzedValues makes has this in it, and no other text has.
inline constexpr const char* kSecret = "tell-nobody";

/// Values of any type of the interfaces, made of the fuzzer's bytes. Most are such that they meet one another
/// (the same few names, small numbers), some are anything at all.
class FuzzedValues {
 public:
  explicit FuzzedValues(FuzzedDataProvider& data) : data_(data) {}

  void Fill(bool& value) { value = data_.ConsumeBool(); }

  void Fill(int& value) {
    static const std::array<int, 20> kNumbers = {-1,  5,   6,   11,  12,  20,   36,   40,    44,    80,
                                                 100, 120, 140, 160, 600, 1440, 3600, 10079, 10080, 86400};
    constexpr int kSmall = 128;
    constexpr int kPlain = 224;
    const int pick = data_.ConsumeIntegral<std::uint8_t>();
    if (pick < kSmall) {
      value = pick % 5;
    } else {
      value = pick < kPlain ? data_.PickValueInArray(kNumbers) : data_.ConsumeIntegral<int>();
    }
  }

  void Fill(std::string& text) {
    static const std::array<const char*, 12> kWords = {"",        "Home",  "Guest",    "Uplink",
                                                       "router",  "br0",   "br-guest", "wlan0_1",
                                                       "wlan1_1", "phone", "SN-0001",  "caf\xC3\xA9"};
    const std::size_t pick = data_.ConsumeIntegralInRange<std::size_t>(0, kWords.size() + 3);
    text = pick < kWords.size() ? kWords.at(pick) : data_.ConsumeRandomLengthString(kLongestText);
    if (text.find(kSecret) != std::string::npos) {
      text.clear();
    }
  }

  void FillSecret(std::string& text) {
    static const std::array<const char*, 5> kEnds = {"", "-1", "-\n", "-\xFF", "-\"#\\"};
    text = std::string(kSecret) + data_.PickValueInArray(kEnds);
    text.resize(text.size() + data_.ConsumeIntegralInRange<std::size_t>(0, kLongestText), 'a');
  }

  void Fill(Wifi::Util::MACAddress& address) {
    std::string text = "0a:00:00:00:00:00";
    constexpr std::string_view kDigits = "0123456789abcdef";
    text.back() = kDigits[data_.ConsumeIntegralInRange<std::size_t>(0, kDigits.size() - 1)];
    if (data_.ConsumeIntegral<std::uint8_t>() < 16) {
      text = data_.ConsumeBool() ? "00:00:00:00:00:00" : "ff:ff:ff:ff:ff:ff";
    }
    address = Wifi::Util::MACAddress(text);
  }

  template <typename E>
  requires std::is_enum_v<E>
  void Fill(E& value) {
    using Number = std::underlying_type_t<E>;
    constexpr int kPlain = 240;
    const int pick = data_.ConsumeIntegral<std::uint8_t>();
    value =
        static_cast<E>(pick < kPlain ? static_cast<Number>(pick % 8 - 1) : data_.ConsumeIntegral<Number>());
  }

  /// Of the many countries also those that are no small numbers.
  void Fill(Wifi::CountryCode& country) {
    country = static_cast<Wifi::CountryCode>(data_.ConsumeIntegralInRange<std::uint16_t>(0, 300));
  }

  template <typename T>
  void Fill(std::vector<T>& values) {
    FillTimes([&] { Fill(values.emplace_back()); });
  }

  template <typename T>
  void Fill(std::set<T>& values) {
    FillTimes([&] { values.insert(Make<T>()); });
  }

  template <typename Key, typename T>
  void Fill(std::map<Key, T>& map) {
    FillTimes([&] {
      Key key = Make<Key>();
      map.insert_or_assign(std::move(key), Make<T>());
    });
  }

  template <Wifi::Record T>
  void Fill(T& record) {
    Wifi::ForEachMember(record, [this](auto member, auto& value) {
      if constexpr (decltype(member)::kind == Wifi::TextKind::Secret) {
        FillSecret(value);
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
  T Make() {
    T value{};
    Fill(value);
    return value;
  }

 private:
  static constexpr std::size_t kLongestText = 70;

  template <typename Add>
  void FillTimes(Add add) {
    for (int left = data_.ConsumeIntegralInRange(0, 4); left > 0; --left) {
      add();
    }
  }

  FuzzedDataProvider& data_;
};

}  // namespace TALO::Fuzz
