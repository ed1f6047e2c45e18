// A caller that asks for too much costs the others nothing.

#include "bus/operations.h"
#include "support/bus_monitor.h"
#include "support/story_test.h"
#include "support/test_connection.h"

#include <unistd.h>

#include <grp.h>

#include <map>
#include <memory>
#include <vector>

namespace TALO::EndToEnd {

namespace {

namespace Bus = Wifi::Bus;

constexpr const char* kGeneral = "com.talo.Wifi1.General";

/// A caller that sends many calls and counts their answers by the name of the error, "none" for results.
class Flood {
 public:
  explicit Flood(const std::string& address) : bus_(OpenBus(address)) {}

  template <typename... Arguments>
  void Send(int count, const char* interface, const char* member, const char* types, Arguments... arguments) {
    for (int i = 0; i < count; ++i) {
      Bus::CheckMessage(sd_bus_call_method_async(bus_.get(), nullptr, "com.talo.Wifi1", "/com/talo/Wifi1",
                                                 interface, member, OnAnswer, this, types, arguments...));
    }
    Bus::CheckMessage(sd_bus_flush(bus_.get()));
  }

  void WaitForAnswers(int count) {
    ProcessBusUntil(bus_.get(), -1, "the answers", [&] { return received_ >= count; });
  }

  const std::map<std::string, int>& Answers() const { return answers_; }

 private:
  static int OnAnswer(sd_bus_message* answer, void* flood, sd_bus_error*) {
    auto& self = *static_cast<Flood*>(flood);
    const sd_bus_error* error = sd_bus_message_get_error(answer);
    ++self.answers_[error != nullptr ? error->name : "none"];
    ++self.received_;
    return 1;
  }

  Bus::BusHandle bus_;
  int received_ = 0;
  std::map<std::string, int> answers_;
};

constexpr const char* kLimitReached = "com.talo.Wifi1.Error.LimitReached";

class Limits : public StoryTest {
 protected:
  /// With a radio that listens for as long as the test lasts, and so holds all who want to know what it
  /// heard.
  void StartListening() {
    StartStory("", {"--model", "Cedar300", "--access-group", "users"}, R"("scanMilliseconds": 3600000)");
  }

  static void AskForScans(Flood& flood, int count) {
    flood.Send(count, kGeneral, "GetScanResults", "i",
               static_cast<int>(Wifi::Util::RadioFrequency::Band2_4GHz));
  }
};

TEST_F(Limits, RefuseTheSeventeenthCallThatAwaitsItsAnswer) {
  StartListening();
  Flood flood(Address());
  // Known from here on.
  flood.Send(1, kGeneral, "GetCountryCode", "");
  flood.WaitForAnswers(1);
  AskForScans(flood, 40);
  flood.WaitForAnswers(1 + 24);
  EXPECT_EQ(flood.Answers(), (std::map<std::string, int>{{"none", 1}, {kLimitReached, 24}}));
  // Others have their own.
  Flood other(Address());
  other.Send(1, kGeneral, "GetCountryCode", "");
  other.WaitForAnswers(1);
  EXPECT_EQ(other.Answers(), (std::map<std::string, int>{{"none", 1}}));
}

TEST_F(Limits, LeaveRoomForOtherUsers) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can act as another user: that floods leave room for others is NOT tested";
  }
  StartListening();
  std::vector<std::unique_ptr<Flood>> floods;
  for (int i = 0; i < 20; ++i) {
    floods.push_back(std::make_unique<Flood>(Address()));
    AskForScans(*floods.back(), 100);
  }
  int refused = 0;
  for (const auto& flood : floods) {
    flood->WaitForAnswers(100 - 16);
    refused += flood->Answers().at(kLimitReached);
  }
  EXPECT_GE(refused, 20 * (100 - 16));
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}),
            Refusal("user 0 has 128 calls that are not answered yet, no more are possible: Limit reached"));
  const gid_t group = getgrnam("users")->gr_gid;
  Bus::BusError error;
  const Bus::BusHandle other = OpenBusAs(Address(), {65534, 65534, {group}});
  EXPECT_GE(sd_bus_call_method(other.get(), "com.talo.Wifi1", "/com/talo/Wifi1", kGeneral,
                               "GetRadioIfStatuses", error.Get(), nullptr, ""),
            0)
      << (*error).message;
}

TEST_F(Limits, CostOthersNothingWhenACallerDoesNotReadItsAnswers) {
  StartStory("");
  CreateNetwork("Home", 1);
  BusMonitor monitor(Address());
  Flood flood(Address());
  flood.Send(5000, kGeneral, "GetNetworkSettings", "");
  flood.Send(1, kGeneral, "GetCountryCode", "");
  // All have come to the bus.
  monitor.WaitForCall("GetCountryCode");
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
  CreateNetwork("Guest", 2);
}

}  // namespace

}  // namespace TALO::EndToEnd
