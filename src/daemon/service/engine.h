#pragma once

#include "client/network_records.h"
#include "daemon/model/networks.h"
#include "daemon/model/views.h"
#include "daemon/radio/radio_driver.h"
#include "daemon/service/clock.h"
#include "daemon/service/log.h"
#include "daemon/store/state_store.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace TALO::Wifid {

/// Holds the state and carries requests through: validate, make the new state, store it durably, apply it to
/// the radios, answer. A success that it reports is stored and in the air; a request that fails at any step
/// leaves state, store and radios as they were. Changes go through one at a time, in the order they came;
/// questions are answered at once, from the state in force.
class Engine {
 public:
  template <typename Answer>
  using Done = std::function<void(const Result<Answer>&)>;

  struct Doors {
    StateStore& store;
    RadioDriver& driver;
    const Clock& clock;
    Log& log;
  };

  /// `bridge` is where new networks send the traffic of their stations.
  Engine(Doors doors, State state, std::string bridge);

  /// Brings the radios to the state; call once, before any change. Changes that come meanwhile wait.
  void Start(Done<void> done);

  /// Runs `view` on the state and what is in the air now.
  template <typename View>
  auto Ask(View view) const {
    const auto live = doors_.driver.GetLive();
    return view(Picture{state_, doors_.driver.GetCapabilities(), live});
  }

  void CreateNetwork(const Wifi::NetworkCreateInfo& info, Done<int> done);
  void DeleteNetwork(int networkId, Done<void> done);
  void RestartNetworks(bool force, Done<void> done);

 private:
  using Finish = std::function<void(const Result<void>&)>;

  /// Queues a change: `rule` makes it from the state in force when its turn comes.
  template <typename Answer>
  void Enqueue(std::function<Result<Change<Answer>>()> rule, Done<Answer> done);
  /// Stores and applies `next`; then calls `finish` and goes on with the queue.
  void Commit(State next, Finish finish);
  /// Takes store and radios back to the state in force; then calls `finish` with `why` and goes on with the
  /// queue.
  void RollBack(const Refusal& why, Finish finish);
  void Step();
  void EndStep();

  Doors doors_;
  State state_;
  std::string bridge_;
  std::deque<std::function<void()>> queue_;
  bool busy_ = false;      ///< a step is under way, perhaps until the driver calls back
  bool stepping_ = false;  ///< Step is running
};

}  // namespace TALO::Wifid
