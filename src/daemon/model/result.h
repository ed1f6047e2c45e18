#pragma once

#include "values/errors.h"

#include <string>
#include <utility>
#include <variant>

namespace TALO::Wifid {

using Wifi::ErrorCode;

/// Why a request is refused: a code and a sentence that names the object and the value. The sentence is shown
/// to operators, so it is UTF-8 on one line and holds no secret.
struct Refusal {
  ErrorCode code;
  std::string sentence;

  bool operator==(const Refusal&) const = default;
};

/// A value or the reason why there is none.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : content_(std::move(value)) {}  // NOLINT(google-explicit-constructor): reads as a return
  Result(Refusal refusal) : content_(std::move(refusal)) {}  // NOLINT(google-explicit-constructor)

  bool Succeeded() const { return content_.index() == 0; }
  /// Only after success.
  const T& Value() const { return std::get<0>(content_); }
  T& Value() { return std::get<0>(content_); }
  /// Only after failure.
  const Refusal& Why() const { return std::get<1>(content_); }

 private:
  std::variant<T, Refusal> content_;
};

/// Success, or the reason why not.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Refusal refusal) : content_(std::move(refusal)) {}  // NOLINT(google-explicit-constructor)

  bool Succeeded() const { return content_.index() == 0; }
  /// Only after failure.
  const Refusal& Why() const { return std::get<1>(content_); }

 private:
  std::variant<std::monostate, Refusal> content_;
};

}  // namespace TALO::Wifid
