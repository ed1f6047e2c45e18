#pragma once

#include "bench/bench.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace TALO::Bench {

/// What simulated radios find around them, and how long what they do takes: each is a timer.
struct Environs {
  int neighbours = 0;
  std::chrono::milliseconds apply{20};
  std::chrono::milliseconds bss{50};
  std::chrono::milliseconds scan{800};
  std::chrono::milliseconds join{300};
};

/// The daemon with as many networks and stations as the budget for its memory names.
class FullRouter {
 public:
  static constexpr int kNetworks = 16;
  static constexpr int kStations = 128;

  /// Every station is connected once this is made.
  explicit FullRouter(const Environs& environs = {});

  EndToEnd::Process& Daemon() { return router_.Daemon(); }

  /// Waits until so many stations are connected.
  static void AwaitStations(std::size_t count = kStations);

  /// The name and SSID of a network, counted from 0; each is known to the stations whose number leaves that
  /// remainder.
  static std::string SSID(int network) { return "Network " + std::to_string(network); }
  static constexpr const char* kPassphrase = "correct-horse";

 private:
  TemporaryDirectory directory_;
  Router router_;
};

}  // namespace TALO::Bench
