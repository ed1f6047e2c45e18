#include "support/callers_test.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Ids = std::vector<int>;

constexpr const char* kDenied = "org.freedesktop.DBus.Error.AccessDenied: ";

TEST_F(CallersTest, AreLetThroughWhenTheyAreAdministrators) {
  const auto root = SendDelete(":1.1", 1);
  const auto own = SendDelete(":1.2", 2);
  const auto member = SendDelete(":1.3", 3);
  RunUntilQuiet();
  EXPECT_EQ(asked_, Ids{});
  Identify(":1.1", Identity{0, {0}});
  Identify(":1.2", Identity{1000, {1000}});
  Identify(":1.3", Identity{1001, {1001, 50}});
  for (const auto cookie : {root, own, member}) {
    EXPECT_EQ(ErrorOfCall(cookie), "none");
    EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
  }
  EXPECT_EQ(asked_, (Ids{1, 2, 3}));
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(CallersTest, AreDeniedAndNamedOtherwise) {
  const auto cookie = SendDelete(":1.1", 1);
  RunUntilQuiet();
  Identify(":1.1", Identity{1001, {1001}});
  EXPECT_EQ(ErrorOfCall(cookie),
            std::string(kDenied) + "user 1001 may not call com.talo.Wifi1.General.DeleteNetwork");
  EXPECT_EQ(ErrorOfCall(Send(":1.1", "Ping", "org.freedesktop.DBus.Peer")),
            std::string(kDenied) + "user 1001 may not call org.freedesktop.DBus.Peer.Ping");
  EXPECT_EQ(ErrorOfCall(Send(":1.1", "Introspect", "org.freedesktop.DBus.Introspectable")),
            std::string(kDenied) + "user 1001 may not call org.freedesktop.DBus.Introspectable.Introspect");
  EXPECT_EQ(ErrorOfCall(Send(":1.1", "Nothing")),
            std::string(kDenied) + "user 1001 may not call com.talo.Wifi1.General.Nothing");
  EXPECT_EQ(asked_, Ids{});
  // Once, or a caller could fill the log.
  EXPECT_EQ(errors_.Text(), "warning: user 1001 may not call com.talo.Wifi1.General.DeleteNetwork\n");
}

TEST_F(CallersTest, AreDeniedWhenTheBusDoesNotKnowThem) {
  const auto first = SendDelete(":1.1", 1);
  const auto second = SendDelete(":1.1", 2);
  RunUntilQuiet();
  Identify(":1.1", std::nullopt);
  for (const auto cookie : {first, second}) {
    EXPECT_EQ(ErrorOfCall(cookie),
              std::string(kDenied) + "the bus does not say who calls com.talo.Wifi1.General.DeleteNetwork");
  }
  EXPECT_EQ(asked_, Ids{});
}

TEST_F(CallersTest, AreDeniedWhenNobodyVouchesForThem) {
  const Bus::Message call = pair_.NewCall("com.talo.Wifi1.General", "ReconnectAllSTA");
  EXPECT_EQ(ErrorOfCall(pair_.Send(call.get())),
            std::string(kDenied) + "nobody vouches for the caller of com.talo.Wifi1.General.ReconnectAllSTA");
  EXPECT_EQ(inWork_.size(), 0U);
}

TEST_F(CallersTest, CannotCallWhatHasNoRowInTheTable) {
  const std::string unknown = "org.freedesktop.DBus.Error.UnknownMethod: nobody may call ";
  EXPECT_EQ(ErrorOfCall(Send(":1.0", "Nothing")), unknown + "com.talo.Wifi1.General.Nothing");
  EXPECT_EQ(ErrorOfCall(Send(":1.0", "Nothing", "org.freedesktop.DBus.Peer")),
            unknown + "org.freedesktop.DBus.Peer.Nothing");
  EXPECT_EQ(ErrorOfCall(Send(":1.0", "ReconnectAllSTA", nullptr)), unknown + ".ReconnectAllSTA");
  EXPECT_EQ(inWork_.size(), 0U);
}

TEST_F(CallersTest, AreAskedForOnce) {
  for (int id = 1; id <= 3; ++id) {
    SendDelete(":1.1", id);
  }
  RunUntilQuiet();
  Identify(":1.1", Identity{0});
  RunUntilQuiet();
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 4)), "none");
  EXPECT_EQ(asked_, (Ids{1, 2, 3, 4}));
  EXPECT_EQ(questionsSoFar_, 2);  // the pinging caller's too
}

TEST_F(CallersTest, DoNotWaitForOneAnother) {
  const auto unknown = SendDelete(":1.1", 1);
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.0", 2)), "none");
  EXPECT_EQ(asked_, Ids{2});
  EXPECT_EQ(pair_.CountAnswers(unknown), 0U);
}

// A call that sd-bus holds already when the caller becomes known would be earlier than those that wait.
TEST_F(CallersTest, KeepTheOrderOfTheirCalls) {
  Bus::Message held;
  const auto hold = [](sd_bus_message* message, void* place, sd_bus_error*) {
    if (sd_bus_message_is_method_call(message, "com.talo.Wifi1.General", "DeleteNetwork") == 0) {
      return 0;
    }
    static_cast<Bus::Message*>(place)->reset(sd_bus_message_ref(message));
    return 1;
  };
  SendDelete(":1.1", 1);
  SendDelete(":1.1", 2);
  RunUntilQuiet();
  {
    sd_bus_slot* slot = nullptr;
    Bus::CheckMessage(sd_bus_add_filter(pair_.Server(), &slot, hold, &held));
    const Bus::Slot filter(slot);
    SendDelete(":1.1", 3);
    RunUntilQuiet();
  }
  ASSERT_NE(held, nullptr);
  Bus::CheckMessage(sd_bus_enqueue_for_read(pair_.Server(), held.get()));
  Identify(":1.1", Identity{0});
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 4)), "none");
  EXPECT_EQ(asked_, (Ids{1, 2, 3, 4}));
}

TEST_F(CallersTest, AreForgottenWhenTheyLeave) {
  known_[":1.1"] = 0;
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 1)), "none");
  known_[":1.1"] = 1001;
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 2)), "none");
  Vanish(":1.1");
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 3)),
            std::string(kDenied) + "user 1001 may not call com.talo.Wifi1.General.DeleteNetwork");
  EXPECT_EQ(asked_, (Ids{1, 2}));
}

TEST_F(CallersTest, TakeTheirWaitingCallsWithThem) {
  SendDelete(":1.1", 1);
  RunUntilQuiet();
  Vanish(":1.1");
  Identify(":1.1", Identity{0});
  RunUntilQuiet();
  EXPECT_EQ(asked_, Ids{});
}

TEST_F(CallersTest, AreRememberedUpToANumber) {
  known_[":1.1"] = 0;
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 1)), "none");
  known_[":2.1"] = 0;
  EXPECT_EQ(ErrorOfCall(SendDelete(":2.1", 2)), "none");
  // With these two and the one that pings, so many are known.
  for (std::size_t i = 3; i < kMaximumCallers; ++i) {
    const std::string name = ":3." + std::to_string(i);
    known_[name] = 0;
    Send(name, "Ping", "org.freedesktop.DBus.Peer");
  }
  RunUntilQuiet();
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 3)), "none");
  EXPECT_EQ(questionsSoFar_, static_cast<int>(kMaximumCallers));
  // One more: the one who has not called for the longest time is asked for again, no other.
  known_[":4.1"] = 0;
  EXPECT_EQ(ErrorOfCall(SendDelete(":4.1", 4)), "none");
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 5)), "none");
  EXPECT_EQ(questionsSoFar_, static_cast<int>(kMaximumCallers) + 1);
  EXPECT_EQ(ErrorOfCall(SendDelete(":2.1", 6)), "none");
  EXPECT_EQ(questionsSoFar_, static_cast<int>(kMaximumCallers) + 2);
}

}  // namespace

}  // namespace TALO::Wifid
