#pragma once

#include "daemon/model/result.h"

#include <functional>
#include <utility>

namespace TALO::Wifid {

/// Takes the result of a request to whoever asked, and knows whether anybody still wants it.
template <typename Answer>
class Done {
 public:
  /// From anything that takes a result. Where that knows whether it is awaited, it is asked; else it always
  /// is.
  template <typename Take>
  Done(Take take) {  // NOLINT(google-explicit-constructor): handed over like the function that it is
    if constexpr (requires { take.IsAwaited(); }) {
      isAwaited_ = [take] { return take.IsAwaited(); };
    }
    take_ = std::move(take);
  }

  /// Awaited as long as `asker` is.
  template <typename Take, typename Asker>
  Done(Take take, Asker asker)
      : take_(std::move(take)), isAwaited_([asker = std::move(asker)] { return asker.IsAwaited(); }) {}

  void operator()(const Result<Answer>& result) const { take_(result); }
  bool IsAwaited() const { return !isAwaited_ || isAwaited_(); }

 private:
  std::function<void(const Result<Answer>&)> take_;
  std::function<bool()> isAwaited_;
};

}  // namespace TALO::Wifid
