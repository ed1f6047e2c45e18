#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <random>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Every passphrase and password that a random request holds has this in it.
inline constexpr const char* kSecret = "tell nobody";

/// Picks the same on every machine: the standard distributions may differ.
class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}

  int Below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }
  bool OneIn(int times) { return Below(times) == 0; }

  template <typename T>
  T OneOf(const std::vector<T>& values) {
    return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
  }

 private:
  std::mt19937 engine_;
};

/// A kind of request: what a rule makes of a state with arguments picked at random, good and bad ones mixed.
struct RequestKind {
  std::string name;
  Result<State> (*ask)(const State& state, const Capabilities& capabilities, Random& random);
};

/// All that change the state.
const std::vector<RequestKind>& RequestKinds();

}  // namespace TALO::Wifid
