#include "daemon/service/bus_announcer.h"

#include "bus/codec.h"
#include "bus/signals.h"
#include "support/bus_pair.h"
#include "support/captured_stream.h"
#include "support/environment.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Wifi::Util::MACAddress;

const MACAddress kPhone("02:aa:00:00:00:01");

/// Path, interface and name of a signal.
std::string NameOf(sd_bus_message* signal) {
  return std::string(sd_bus_message_get_path(signal)) + " " + sd_bus_message_get_interface(signal) + " " +
         sd_bus_message_get_member(signal);
}

class BusAnnouncers : public testing::Test {
 protected:
  BusAnnouncers() { announcer_.Attach(pair_.Server()); }

  /// The only signal that was received; null where there is not one.
  sd_bus_message* TheSignal(const std::string& name) {
    pair_.RunUntilQuiet();
    const auto signals = pair_.Signals();
    EXPECT_EQ(signals.size(), 1U);
    if (signals.size() != 1) {
      return nullptr;
    }
    EXPECT_EQ(NameOf(signals[0]), "/com/talo/Wifi1 com.talo.Wifi1.General " + name);
    return signals[0];
  }

  EnvironmentVariable noJournal_{"JOURNAL_STREAM", std::nullopt};
  CapturedStream errors_{std::cerr};
  Log log_{Severity::Debug};
  BusAnnouncer announcer_{log_};
  BusPair pair_;
};

TEST_F(BusAnnouncers, TellThatNetworksChanged) {
  announcer_.NetworksChanged();
  EXPECT_EQ(SignatureOf(TheSignal("NetworksChanged")), "");
}

TEST_F(BusAnnouncers, TellOfAStationThatConnected) {
  announcer_.Happened(StationConnected{kPhone, 7, "wlan0_3"});
  sd_bus_message* signal = TheSignal("StationConnected");
  ASSERT_EQ(SignatureOf(signal), "sis");
  EXPECT_EQ((Bus::StationConnectedSignal::ValuesCodec::Read(signal)),
            (std::tuple<MACAddress, int, std::string>(kPhone, 7, "wlan0_3")));
}

TEST_F(BusAnnouncers, TellOfAStationThatDisconnectedAndWhy) {
  announcer_.Happened(StationDisconnected{kPhone, 7, "wlan0_3", "passphrase changed"});
  sd_bus_message* signal = TheSignal("StationDisconnected");
  ASSERT_EQ(SignatureOf(signal), "siss");
  EXPECT_EQ(
      (Bus::StationDisconnectedSignal::ValuesCodec::Read(signal)),
      (std::tuple<MACAddress, int, std::string, std::string>(kPhone, 7, "wlan0_3", "passphrase changed")));
}

TEST_F(BusAnnouncers, TellOfARadioThatWentUp) {
  announcer_.Happened(RadioStateChanged{RadioFrequency::Band5GHz_1, true});
  sd_bus_message* signal = TheSignal("RadioStateChanged");
  ASSERT_EQ(SignatureOf(signal), "ib");
  EXPECT_EQ((Bus::RadioStateChangedSignal::ValuesCodec::Read(signal)),
            (std::tuple<RadioFrequency, bool>(RadioFrequency::Band5GHz_1, true)));
}

TEST_F(BusAnnouncers, TellHowAWPSSessionEnded) {
  using Outcome = WPSFinished::Outcome;
  const std::vector<std::pair<Outcome, std::string>> rows = {{Outcome::Enrolled, "enrolled"},
                                                             {Outcome::TimedOut, "timed out"},
                                                             {Outcome::Overlap, "overlap"},
                                                             {Outcome::Cancelled, "cancelled"}};
  for (const auto& [outcome, word] : rows) {
    announcer_.Happened(WPSFinished{"wlan0_1", outcome});
  }
  pair_.RunUntilQuiet();
  const auto signals = pair_.Signals();
  ASSERT_EQ(signals.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(NameOf(signals[i]), "/com/talo/Wifi1 com.talo.Wifi1.General WPSFinished");
    EXPECT_EQ((Bus::WPSFinishedSignal::ValuesCodec::Read(signals[i])),
              (std::tuple<std::string, std::string>("wlan0_1", rows[i].second)));
  }
}

TEST_F(BusAnnouncers, KeepTheOrder) {
  announcer_.NetworksChanged();
  announcer_.Happened(RadioStateChanged{RadioFrequency::Band2_4GHz, false});
  announcer_.NetworksChanged();
  pair_.RunUntilQuiet();
  std::vector<std::string> names;
  for (sd_bus_message* signal : pair_.Signals()) {
    names.emplace_back(sd_bus_message_get_member(signal));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"NetworksChanged", "RadioStateChanged", "NetworksChanged"}));
}

TEST_F(BusAnnouncers, SayInTheLogWhatCannotBeSent) {
  announcer_.Happened(StationConnected{kPhone, 7, "\xff"});
  announcer_.NetworksChanged();
  EXPECT_EQ(SignatureOf(TheSignal("NetworksChanged")), "");
  EXPECT_TRUE(errors_.Text().starts_with("warning: the signal StationConnected was not sent: "))
      << errors_.Text();
}

TEST(BusAnnouncer, IsSilentWithoutABus) {
  const Log log(Severity::Debug);
  BusAnnouncer announcer(log);
  announcer.NetworksChanged();
  announcer.Happened(RadioStateChanged{});
}

}  // namespace

}  // namespace TALO::Wifid
