// What is read of a call or an answer, whatever its body: the right bytes, or others under the right
// signature. What could be read is written again, and read again it is the same.

#include "daemon/service/message_size.h"
#include "fuzz/support/fuzzed_values.h"
#include "fuzz/support/operation_visit.h"
#include "fuzz/support/raw_messages.h"
#include "fuzz/support/require.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace TALO::Fuzz {

namespace {

namespace Bus = Wifi::Bus;

/// The values of a message of these arguments; nothing where it cannot be read.
template <typename... T>
std::optional<std::tuple<T...>> ReadAll(sd_bus_message* message, Bus::ArgumentsCodec<T...>) {
  try {
    auto values = Bus::ArgumentsCodec<T...>::Read(message);
    Require(sd_bus_message_at_end(message, 1) == 1, "a message is read to its end");
    return values;
  } catch (const Bus::CodecError& error) {
    Require(*error.what() != '\0', "a refusal says why");
    return std::nullopt;
  }
}

/// How large values are, counted from themselves.
class Extent {
 public:
  template <typename... T>
  explicit Extent(const std::tuple<T...>& values) {
    AddText(std::string_view("/").size());  // the message's path
    std::apply([this](const T&... each) { (Add(each), ...); }, values);
  }

  bool IsTooLarge() const {
    return isTooLarge_ || values_ > Wifid::kMaximumValues || bytes_ > Wifid::kMaximumBytesOfTexts;
  }

 private:
  template <typename T>
  void Add(const T& value) {
    ++values_;
    if constexpr (Wifi::Record<T>) {
      Wifi::ForEachMember(value, [this](auto, const auto& each) { Add(each); });
    } else if constexpr (std::is_same_v<T, std::string>) {
      AddText(value.size());
    } else if constexpr (std::is_same_v<T, Wifi::Util::MACAddress>) {
      AddText(value.ToString().size());
    } else if constexpr (std::ranges::range<T>) {
      isTooLarge_ = isTooLarge_ || value.size() > Wifid::kMaximumListValues;
      std::ranges::for_each(value, [this](const auto& each) { Add(each); });
    }
  }
  /// An entry of a map counts, and what is in it.
  template <typename Key, typename T>
  void Add(const std::pair<Key, T>& entry) {
    ++values_;
    Add(entry.first);
    Add(entry.second);
  }
  void AddText(std::size_t bytes) {
    isTooLarge_ = isTooLarge_ || bytes > Wifid::kMaximumTextBytes;
    bytes_ += bytes;
  }

  std::size_t values_ = 0;
  std::size_t bytes_ = 0;
  bool isTooLarge_ = false;
};

/// Whether it is said to be too large; nothing where it cannot be measured. It is as unread as before.
std::optional<bool> Measure(sd_bus_message* message) {
  try {
    const bool isTooLarge = Wifid::FindExcess(message).has_value();
    Require(sd_bus_message_at_end(message, 1) == (sd_bus_message_is_empty(message) > 0 ? 1 : 0),
            "a measured message is unread");
    return isTooLarge;
  } catch (const Bus::CodecError&) {
    sd_bus_message_rewind(message, 1);
    return std::nullopt;
  }
}

class Exchange {
 public:
  explicit Exchange(FuzzedDataProvider& data) : data_(data) {}

  /// A body of these types, from anybody or from a program of ours.
  template <typename... T>
  void Carry(Bus::ArgumentsCodec<T...> codec) {
    if (data_.ConsumeBool()) {
      std::tuple<T...> values;
      FuzzedValues(data_).Fill(values);
      CarryValues(codec, values);
      return;
    }
    const Bus::Message message =
        messages_.Receive(decltype(codec)::signature.text, data_.ConsumeRemainingBytesAsString());
    if (!message) {
      return;
    }
    const auto measured = Measure(message.get());
    if (const auto values = ReadAll(message.get(), codec)) {
      Require(measured && (*measured || !Extent(*values).IsTooLarge()),
              "what holds more than is allowed is said to");
      Require(CarryValues(codec, *values), "what was read can be written");
    }
  }

 private:
  /// False where a text cannot travel.
  template <typename... T>
  bool CarryValues(Bus::ArgumentsCodec<T...> codec, const std::tuple<T...>& values) {
    const Bus::Message message = messages_.NewMessage();
    try {
      std::apply([&message](const T&... each) { Bus::ArgumentsCodec<T...>::Append(message.get(), each...); },
                 values);
    } catch (const Bus::InvalidText&) {
      return false;
    }
    RawMessages::Seal(message.get());
    Require(
        sd_bus_message_get_signature(message.get(), 1) == std::string_view(decltype(codec)::signature.text),
        "a message has its signature");
    Require(Measure(message.get()) == Extent(values).IsTooLarge(), "what is too large is said to be");
    const auto carried = ReadAll(message.get(), codec);
    Require(carried == values, "what was written is read");
    return true;
  }

  FuzzedDataProvider& data_;
  static RawMessages messages_;
};

RawMessages Exchange::messages_;

template <typename Result>
Bus::ArgumentsCodec<Result> AsArguments(Bus::ResultCodec<Result>) {
  return {};
}
inline Bus::ArgumentsCodec<> AsArguments(Bus::ResultCodec<void>) { return {}; }

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  FuzzedDataProvider data(bytes, size);
  const auto index = data.ConsumeIntegralInRange<std::size_t>(0, Fuzz::kOperations - 1);
  const bool isAnswer = data.ConsumeBool();
  Fuzz::Exchange exchange(data);
  Fuzz::VisitOperation(index, [&](auto, auto row) {
    using Row = decltype(row);
    if (isAnswer) {
      exchange.Carry(Fuzz::AsArguments(typename Row::ResultCodec{}));
    } else {
      exchange.Carry(typename Row::ArgumentsCodec{});
    }
  });
  return 0;
}
