#pragma once

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/stopwatch.h"

#include <sys/types.h>

#include <json/value.h>

#include <string>
#include <utility>

namespace TALO::Hwsim {

/// A router with all that may get lost: two networks, one of them with another password and a filter, a
/// client of each, and an upstream connection.
class FurnishedRouter : public Scenario {
 protected:
  FurnishedRouter();

  KnownNetwork Guests() const;

  /// One of the daemon's programs.
  pid_t FindProgram(const std::string& name) { return FindChild(Daemon().Id(), name); }
  /// Sends one of them a signal and returns which it was.
  pid_t SendSignal(const std::string& name, int number);
  /// Waits until another of this name runs in the place of one, and tells the stopwatch.
  void ExpectAnother(const std::string& name, pid_t before, Stopwatch& watch);

  /// Since when each client has been connected without a break.
  using ClientsSince = std::pair<std::string, std::string>;
  ClientsSince AskClients() const { return {phone_.ConnectedSince(), laptop_.ConnectedSince()}; }

  /// What those in the air told up to now is not waited for any more.
  void ForgetEvents();
  /// Waits until both clients have lost their connections and got others, and tells the stopwatch.
  void ExpectClientsBack(Stopwatch& watch);
  /// Waits until all is as it was, for those in the air, too, and tells the stopwatch.
  void ExpectAllBack(Stopwatch& watch);
  /// Password and filter are those that were set. Both clients are turned away by that.
  void ExpectPasswordAndFilterInForce();

  NetworkNamespace neighbour_{"neighbour"};
  ForeignAP upstream_{
      neighbour_, neighbour_.TakeRadio(4), {.ssid = "Uplink", .passphrase = "uplink-password"}};
  Client phone_{"phone", 2};
  Client laptop_{"laptop", 3};
  Json::Value networks_;  ///< as they were made
};

}  // namespace TALO::Hwsim
