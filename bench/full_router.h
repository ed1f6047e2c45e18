#pragma once

#include "bench/bench.h"

namespace TALO::Bench {

/// The daemon with as many networks and stations as the budget for its memory names.
class FullRouter {
 public:
  static constexpr int kNetworks = 16;
  static constexpr int kStations = 128;

  /// Every station is connected once this is made.
  FullRouter();

  EndToEnd::Process& Daemon() { return router_.Daemon(); }

 private:
  TemporaryDirectory directory_;
  Router router_;
};

}  // namespace TALO::Bench
