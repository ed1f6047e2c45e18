#include "daemon/service/message_size.h"
#include "daemon/service/unsent_messages.h"
#include "support/callers_test.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;

constexpr const char* kLimit = "com.talo.Wifi1.Error.LimitReached: ";

class CallLimitsTest : public CallersTest {
 protected:
  /// The callers `first` and so on, each with as many calls in work as one may have.
  void Fill(int first, int callers, uid_t user) {
    for (int i = first; i < first + callers; ++i) {
      const std::string name = ":9." + std::to_string(i);
      known_[name] = user;
      for (std::size_t call = 0; call < kMaximumCallsOfCaller; ++call) {
        Send(name);
      }
      RunUntilQuiet();
    }
  }
  std::string ErrorOf(const std::string& caller) { return ErrorOfCall(Send(caller)); }
};

TEST_F(CallLimitsTest, HoldForEachCallerByItself) {
  Fill(1, 1, 0);
  EXPECT_EQ(inWork_.size(), 16U);
  EXPECT_EQ(ErrorOf(":9.1"),
            std::string(kLimit) + "this caller has 16 calls that are not answered yet, no more are possible");
  EXPECT_EQ(inWork_.size(), 16U);
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.0", 1)), "none");
  // An answer makes room for one more.
  inWork_.front()({});
  EXPECT_EQ(ErrorOfCall(SendDelete(":9.1", 2)), "none");
  EXPECT_EQ(asked_, (std::vector<int>{1, 2}));
}

TEST_F(CallLimitsTest, HoldForTheConnectionsOfAUserTogether) {
  Fill(1, 8, 0);
  EXPECT_EQ(inWork_.size(), 128U);
  known_[":8.1"] = 0;
  EXPECT_EQ(ErrorOf(":8.1"),
            std::string(kLimit) + "user 0 has 128 calls that are not answered yet, no more are possible");
  known_[":8.2"] = 1000;
  EXPECT_EQ(ErrorOfCall(SendDelete(":8.2", 1)), "none");
  inWork_.clear();
  EXPECT_EQ(ErrorOfCall(SendDelete(":8.1", 2)), "none");
}

TEST_F(CallLimitsTest, HoldForAllTogether) {
  Fill(1, 8, 0);
  Fill(9, 8, 1000);
  EXPECT_EQ(inWork_.size(), 256U);
  Send(":8.1");
  RunUntilQuiet();
  Identify(":8.1", Identity{1001, {50}});
  const auto cookie = SendDelete(":8.1", 1);
  EXPECT_EQ(
      ErrorOfCall(cookie),
      std::string(kLimit) + "the wifi daemon has 256 calls that are not answered yet, no more are possible");
  inWork_.pop_back();
  EXPECT_EQ(ErrorOfCall(SendDelete(":8.1", 2)), "none");
}

TEST_F(CallLimitsTest, HoldForThoseWhoAreNotKnownYet) {
  RunUntilQuiet();
  std::vector<std::uint64_t> cookies;
  for (int id = 1; id <= 17; ++id) {
    cookies.push_back(SendDelete(":1.1", id));
  }
  EXPECT_EQ(ErrorOfCall(cookies.back()),
            std::string(kLimit) +
                "this caller has 16 calls that wait for the bus to say who calls, no more are possible");
  for (int caller = 2; caller <= 16; ++caller) {
    for (int id = 1; id <= 16; ++id) {
      SendDelete(":1." + std::to_string(caller), id);
    }
  }
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.17", 1)),
            std::string(kLimit) +
                "the wifi daemon has 256 calls that wait for the bus to say who calls, no more are possible");
  // Those who are known do not care.
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.0", 100)), "none");
  EXPECT_EQ(asked_, std::vector<int>{100});
  Identify(":1.1", Identity{0});
  EXPECT_EQ(ErrorOfCall(cookies[15]), "none");
  EXPECT_EQ(asked_.size(), 17U);
  Vanish(":1.2");
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.1", 17)), "none");
}

TEST_F(CallLimitsTest, TellWhenNobodyAwaitsACallAnyMore) {
  Fill(1, 2, 0);
  EXPECT_TRUE(inWork_.front().IsAwaited());
  Vanish(":9.1");
  EXPECT_FALSE(inWork_.front().IsAwaited());
  EXPECT_TRUE(inWork_.back().IsAwaited());
  inWork_.back()({});
  EXPECT_FALSE(inWork_.back().IsAwaited());
}

// What a caller left behind still costs its user, until it is out of work.
TEST_F(CallLimitsTest, CountTheCallsOfThoseWhoLeft) {
  Fill(1, 8, 0);
  Vanish(":9.1");
  known_[":8.1"] = 0;
  EXPECT_TRUE(ErrorOf(":8.1").starts_with(std::string(kLimit) + "user 0 has 128 calls"));
  inWork_.clear();
  EXPECT_EQ(ErrorOfCall(SendDelete(":8.1", 1)), "none");
}

TEST_F(CallLimitsTest, PassCallsOverWhileTheBusTakesNoAnswers) {
  RunUntilQuiet();
  const std::string text(4096, 'x');
  std::uint64_t unsent = 0;
  while (unsent < kMaximumUnsentMessages) {
    Bus::CheckMessage(sd_bus_emit_signal(pair_.Server(), "/a", "a.b", "C", "s", text.c_str()));
    Bus::CheckMessage(sd_bus_get_n_queued_write(pair_.Server(), &unsent));
  }
  const auto passedOver = SendDelete(":1.0", 1);
  const auto denied = SendDelete(":1.1", 2);
  Bus::CheckMessage(sd_bus_flush(pair_.Client()));
  // The other end takes nothing meanwhile.
  for (int i = 0; i < 10; ++i) {
    Bus::CheckMessage(sd_bus_process(pair_.Server(), nullptr));
  }
  EXPECT_EQ(asked_, std::vector<int>{});
  EXPECT_EQ(errors_.Text(), "err: the bus does not take answers, calls are passed over until it does\n");
  while (unsent > 0) {
    Bus::CheckMessage(sd_bus_process(pair_.Client(), nullptr));
    Bus::CheckMessage(sd_bus_process(pair_.Server(), nullptr));
    Bus::CheckMessage(sd_bus_get_n_queued_write(pair_.Server(), &unsent));
  }
  EXPECT_EQ(ErrorOfCall(SendDelete(":1.0", 3)), "none");
  EXPECT_EQ(asked_, std::vector<int>{3});
  EXPECT_EQ(pair_.CountAnswers(passedOver), 0U);
  EXPECT_EQ(pair_.CountAnswers(denied), 0U);
}

/// What a call is refused with that `append` fills.
class MessageSize : public CallersTest {
 protected:
  template <typename Append>
  std::string ErrorWith(const char* member, Append append) {
    const Bus::Message call = NewCall(":1.0", member);
    append(call.get());
    return ErrorOfCall(pair_.Send(call.get()));
  }
  static Wifi::MACFilterGlobal GlobalOf(std::size_t devices, std::size_t nameBytes) {
    return {
        std::vector<Wifi::MACFilterDevice>(devices, {std::string(nameBytes, 'n'), Wifi::Util::MACAddress()}),
        true, 1};
  }
  std::string ErrorWithGlobal(std::size_t devices, std::size_t nameBytes) {
    return ErrorWith("SetMACFilterGlobal", [&](sd_bus_message* call) {
      Bus::Codec<Wifi::MACFilterGlobal>::Append(call, GlobalOf(devices, nameBytes));
    });
  }
  std::string ErrorWithName(std::size_t bytes) {
    return ErrorWith("CreateNetwork", [&](sd_bus_message* call) {
      Bus::Codec<Wifi::NetworkCreateInfo>::Append(call,
                                                  {std::string(bytes, '\xff'), "Home", "correct-horse"});
    });
  }

  MessageSize() {
    using Wifi::WifiClient;
    general_.Handle<&WifiClient::SetMACFilterGlobal>([](const auto&, const auto& respond) { respond({}); });
    general_.Handle<&WifiClient::CreateNetwork>([](const auto&, const auto& respond) { respond(1); });
    general_.Handle<&WifiClient::DeleteMACFilterProfiles>(
        [](const auto&, const auto& respond) { respond({}); });
  }
};

TEST_F(MessageSize, IsLimitedForTexts) {
  EXPECT_EQ(ErrorWithName(1024), "none");
  EXPECT_EQ(ErrorWithName(1025), std::string(kLimit) +
                                     "com.talo.Wifi1.General.CreateNetwork was given a text of 1025 bytes, "
                                     "it may have 1024");
  EXPECT_EQ(ErrorWithGlobal(1, 1024), "none");
  EXPECT_EQ(ErrorWithGlobal(1, 1025),
            std::string(kLimit) +
                "com.talo.Wifi1.General.SetMACFilterGlobal was given a text of 1025 "
                "bytes, it may have 1024");
}

TEST_F(MessageSize, IsLimitedForLists) {
  EXPECT_EQ(ErrorWithGlobal(4096, 0), "none");
  EXPECT_EQ(ErrorWithGlobal(4097, 0),
            std::string(kLimit) +
                "com.talo.Wifi1.General.SetMACFilterGlobal was given a list with more "
                "than 4096 values");
  const auto errorWithIds = [this](int count) {
    return ErrorWith("DeleteMACFilterProfiles", [count](sd_bus_message* call) {
      const std::vector<int> ids(static_cast<std::size_t>(count), 7);
      Bus::Codec<std::vector<int>>::Append(call, ids);
    });
  };
  EXPECT_EQ(errorWithIds(4096), "none");
  EXPECT_EQ(errorWithIds(4097),
            std::string(kLimit) +
                "com.talo.Wifi1.General.DeleteMACFilterProfiles was given a list with more "
                "than 4096 values");
}

TEST_F(MessageSize, IsLimitedForAllListsTogether) {
  // Whatever its form: it is measured before anybody asks whether the operation takes that.
  const auto errorWithLists = [this](std::size_t values) {
    return ErrorWith("DeleteMACFilterProfiles", [values](sd_bus_message* call) {
      const std::vector<int> list(values, 7);
      Bus::Codec<std::vector<std::vector<int>>>::Append(call, {list, list, list, list});
    });
  };
  // The five lists are values as well.
  EXPECT_EQ(errorWithLists(4094).find(kLimit), std::string::npos);
  EXPECT_EQ(errorWithLists(4095),
            std::string(kLimit) +
                "com.talo.Wifi1.General.DeleteMACFilterProfiles was given more than 16384 values");
}

TEST_F(MessageSize, IsLimitedForAllTextsTogether) {
  // The path and the addresses count too.
  EXPECT_EQ(ErrorWithGlobal(1000, 245), "none");
  EXPECT_EQ(ErrorWithGlobal(1000, 246),
            std::string(kLimit) +
                "com.talo.Wifi1.General.SetMACFilterGlobal was given texts of more "
                "than 262144 bytes");
}

TEST_F(MessageSize, IsLimitedForWhatStandsInAVariant) {
  const Bus::Message call = NewCall(":1.0", "Set", "org.freedesktop.DBus.Properties");
  const std::string word(1025, 'd');
  Bus::CheckMessage(
      sd_bus_message_append(call.get(), "ssv", "org.freedesktop.LogControl1", "LogLevel", "s", word.c_str()));
  EXPECT_EQ(ErrorOfCall(pair_.Send(call.get())),
            std::string(kLimit) +
                "org.freedesktop.DBus.Properties.Set was given a text of 1025 bytes, it may have 1024");
}

TEST_F(MessageSize, IsLimitedForThePath) {
  const std::string path = "/" + std::string(1024, 'p');
  const Bus::Message call = pair_.NewCall(path.c_str(), "com.talo.Wifi1.General", "ReconnectAllSTA");
  Bus::CheckMessage(sd_bus_message_set_sender(call.get(), ":1.0"));
  EXPECT_EQ(ErrorOfCall(pair_.Send(call.get())),
            std::string(kLimit) +
                "com.talo.Wifi1.General.ReconnectAllSTA was given a text of 1025 bytes, it may have 1024");
}

}  // namespace

}  // namespace TALO::Wifid
