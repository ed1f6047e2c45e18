#pragma once

#include "bus/operations.h"
#include "daemon/service/bus_interface.h"
#include "daemon/service/callers.h"
#include "support/bus_pair.h"
#include "support/captured_stream.h"
#include "support/environment.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Callers of every name before the general interface; the test says who they are. User 1000 is the daemon's
/// own, the group 50 is let in.
class CallersTest : public testing::Test {
 protected:
  CallersTest() {
    using Wifi::WifiClient;
    general_.Handle<&WifiClient::DeleteNetwork>([this](int id, const auto& respond) {
      asked_.push_back(id);
      respond({});
    });
    general_.Handle<&WifiClient::ReconnectAllSTA>(
        [this](const auto& respond) { inWork_.push_back(respond); });
    callers_.Attach(pair_.Server());
    general_.Attach(pair_.Server());
  }

  Wifi::Bus::Message NewCall(const std::string& caller, const char* member,
                             const char* interface = "com.talo.Wifi1.General") {
    Wifi::Bus::Message call = pair_.NewCall(interface, member);
    Wifi::Bus::CheckMessage(sd_bus_message_set_sender(call.get(), caller.c_str()));
    return call;
  }
  std::uint64_t Send(const std::string& caller, const char* member = "ReconnectAllSTA",
                     const char* interface = "com.talo.Wifi1.General") {
    return pair_.Send(NewCall(caller, member, interface).get());
  }
  std::uint64_t SendDelete(const std::string& caller, int id) {
    const Wifi::Bus::Message call = NewCall(caller, "DeleteNetwork");
    Wifi::Bus::Codec<int>::Append(call.get(), id);
    return pair_.Send(call.get());
  }

  /// Runs both ends until what was sent has been worked off. A ping is a call too, of somebody known.
  void RunUntilQuiet() {
    const std::uint64_t ping = Send(":1.0", "Ping", "org.freedesktop.DBus.Peer");
    EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(ping)), "none");
  }

  /// The bus's answer to the question who a caller is.
  void Identify(const std::string& caller, const std::optional<Identity>& identity) {
    const auto identified = questions_.extract(caller);
    ASSERT_FALSE(identified.empty()) << caller;
    identified.mapped()(identity);
  }
  /// The error of a call's answer, once it is there.
  std::string ErrorOfCall(std::uint64_t cookie) { return ErrorOf(pair_.WaitForAnswer(cookie)); }

  /// The bus says that a connection has gone.
  void Vanish(const std::string& caller) {
    sd_bus_message* made = nullptr;
    Wifi::Bus::CheckMessage(sd_bus_message_new_signal(pair_.Client(), &made, "/org/freedesktop/DBus",
                                                      "org.freedesktop.DBus", "NameOwnerChanged"));
    const Wifi::Bus::Message signal(made);
    Wifi::Bus::CheckMessage(sd_bus_message_append(made, "sss", caller.c_str(), caller.c_str(), ""));
    Wifi::Bus::CheckMessage(sd_bus_message_set_sender(made, "org.freedesktop.DBus"));
    pair_.Send(made);
    RunUntilQuiet();
  }

  EnvironmentVariable noJournal_{"JOURNAL_STREAM", std::nullopt};
  CapturedStream errors_{std::cerr};
  Log log_{Severity::Debug};
  std::vector<int> asked_;
  std::vector<Responder<void>> inWork_;
  std::map<std::string, uid_t> known_ = {{":1.0", 0}};  ///< whom the bus tells at once
  std::map<std::string, Callers::Identified> questions_;
  int questionsSoFar_ = 0;
  Callers callers_{{1000, 50},
                   [this](const std::string& caller, Callers::Identified identified) {
                     ++questionsSoFar_;
                     if (known_.contains(caller)) {
                       identified(Identity{known_.at(caller)});
                     } else {
                       questions_[caller] = std::move(identified);
                     }
                   },
                   log_};
  BusInterface<Wifi::Bus::General> general_{[this](sd_bus_message* call) { return callers_.Admit(call); }};
  BusPair pair_;
};

}  // namespace TALO::Wifid
