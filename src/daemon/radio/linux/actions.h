#pragma once

#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/radio_driver.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What is done to bring a radio from what it is to what is wanted, as data: found by pure rules, carried out
/// elsewhere, in order, until the first that fails.
namespace TALO::Wifid {

struct WriteFile {
  std::string name;  ///< of the private files
  std::string text;

  bool operator==(const WriteFile&) const = default;
};

struct RemoveFile {
  std::string name;

  bool operator==(const RemoveFile&) const = default;
};

/// A command on a global control socket that "OK" answers; where it is to undo what may not be there, any
/// answer will do.
struct AskHostapd {
  std::string command;
  bool mayFail = false;

  bool operator==(const AskHostapd&) const = default;
};

/// Until hostapd has the radio of this interface running: where it is wider than 20 MHz it listens first.
struct AwaitRadio {
  std::string interface;

  bool operator==(const AwaitRadio&) const = default;
};

struct AskSupplicant {
  std::string command;
  bool mayFail = false;

  bool operator==(const AskSupplicant&) const = default;
};

/// Made where it is not there.
struct KeepInterface {
  Kernel::NewInterface interface;

  bool operator==(const KeepInterface&) const = default;
};

/// In the place of one that is left from before.
struct MakeInterface {
  Kernel::NewInterface interface;

  bool operator==(const MakeInterface&) const = default;
};

/// One that is not there is gone already.
struct DropInterface {
  std::string name;

  bool operator==(const DropInterface&) const = default;
};

struct PutOnBridge {
  std::string interface;
  std::string bridge;  ///< empty for none

  bool operator==(const PutOnBridge&) const = default;
};

struct SendWithPower {
  int wiphy = 0;
  int power = 0;  ///< dBm at most

  bool operator==(const SendWithPower&) const = default;
};

using Action = std::variant<WriteFile, RemoveFile, AskHostapd, AwaitRadio, AskSupplicant, KeepInterface,
                            MakeInterface, DropInterface, PutOnBridge, SendWithPower>;

/// What is true once all actions of a task have succeeded.
struct RadioIsDown {
  bool operator==(const RadioIsDown&) const = default;
};
struct RadioIsUp {
  ChannelSettings channel;

  bool operator==(const RadioIsUp&) const = default;
};
struct BSSIsDown {
  std::string interface;
  std::string reason = "BSS down";  ///< for its stations

  bool operator==(const BSSIsDown&) const = default;
};
struct BSSIsUp {
  BSSPlan bss;

  bool operator==(const BSSIsUp&) const = default;
};
/// It was up before and stays so.
struct BSSHasChanged {
  enum class Dropped { Nobody, Everybody, WhoIsNotAdmitted };
  BSSPlan bss;
  Dropped dropped = Dropped::Nobody;  ///< by that change

  bool operator==(const BSSHasChanged&) const = default;
};
struct PowerIs {
  int power = 0;  ///< dBm

  bool operator==(const PowerIs&) const = default;
};
struct StationIs {
  std::optional<StationPlan> station;

  bool operator==(const StationIs&) const = default;
};
struct BackhaulStationIs {
  std::optional<BackhaulStationPlan> station;

  bool operator==(const BackhaulStationIs&) const = default;
};

/// An interface that only listens has come or gone.
struct ListenerIs {
  bool there = false;

  bool operator==(const ListenerIs&) const = default;
};

/// The stations look for their access points again.
struct StationsRejoin {
  bool operator==(const StationsRejoin&) const = default;
};

using Outcome = std::variant<RadioIsDown, RadioIsUp, BSSIsDown, BSSIsUp, BSSHasChanged, PowerIs, StationIs,
                             BackhaulStationIs, ListenerIs, StationsRejoin>;

/// Steps that belong together, and what they come to. Where one fails, what the outcome speaks of is in
/// between, and is made anew the next time.
struct Task {
  std::vector<Action> actions;
  Outcome outcome;
  bool isNeeded = true;  ///< else its failure is noted, and the next task goes on

  bool operator==(const Task&) const = default;
};

}  // namespace TALO::Wifid
