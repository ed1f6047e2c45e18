#include "hwsim/support/furnished_router.h"

#include "hwsim/support/waiting.h"

#include <csignal>
#include <stdexcept>

namespace TALO::Hwsim {

FurnishedRouter::FurnishedRouter() {
  StartOnRadios();
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2, "welcome-guest");
  Do({"rotatePassword", "--id", "2", "--radio", "SmartConnect"});
  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "laptop", "--action", "Deny", "--devices", "laptop",
                     laptop_.Address(), "--applyToAll", "0"}),
            EndToEnd::Success("ID: 1\n"));
  Call<&Wifi::WifiClient::AssignMACFilterProfile>(2, 1);
  Do(StationCommand("Band2_4GHz", "Uplink", "uplink-password"));
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  networks_ = Ask({"getNetworks"});
  phone_.Join(Guests());
  laptop_.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  ExpectDevicesInTheEnd({phone_.Address(), laptop_.Address()});
}

KnownNetwork FurnishedRouter::Guests() const {
  return {.ssid = "Guests", .passphrase = networks_[1]["passphrase"].asString()};
}

pid_t FurnishedRouter::SendSignal(const std::string& name, int number) {
  const pid_t program = FindProgram(name);
  if (program <= 0 || kill(program, number) != 0) {
    throw std::runtime_error(name + " takes no signal");
  }
  return program;
}

void FurnishedRouter::ExpectAnother(const std::string& name, pid_t before, Stopwatch& watch) {
  WaitUntil(
      name + " runs again",
      [&] {
        const pid_t now = FindProgram(name);
        return now > 0 && now != before;
      },
      kPatienceWithAHang);
  watch.Tell(name + " runs again");
}

void FurnishedRouter::ForgetEvents() {
  for (ControlSocket* control : {&upstream_.Control(), &phone_.Control(), &laptop_.Control()}) {
    control->ForgetEvents();
  }
}

void FurnishedRouter::ExpectClientsBack(Stopwatch& watch) {
  for (Client* client : {&phone_, &laptop_}) {
    client->ExpectDisconnected();
    client->ExpectConnected();
  }
  watch.Tell("all clients are back");
}

void FurnishedRouter::ExpectAllBack(Stopwatch& watch) {
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  WaitUntil("the networks are as they were", [&] { return Ask({"getNetworks"}) == networks_; });
  ExpectDevicesInTheEnd({phone_.Address(), laptop_.Address()});
  phone_.ExpectConnectedInTheEnd();
  laptop_.ExpectConnectedInTheEnd();
  watch.Tell("all is as it was");
}

void FurnishedRouter::ExpectPasswordAndFilterInForce() {
  laptop_.BeginToJoin(Guests());
  laptop_.ExpectRefused();
  phone_.BeginToJoin({.ssid = "Guests", .passphrase = "welcome-guest"});
  phone_.ExpectRefused();
}

}  // namespace TALO::Hwsim
