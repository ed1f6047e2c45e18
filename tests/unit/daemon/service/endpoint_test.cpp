#include "daemon/service/endpoint.h"

#include "bus/names.h"
#include "daemon/service/bus_interface.h"
#include "support/admit_all.h"
#include "support/bus_pair.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using Wifi::WifiClient;

constexpr const char* kGeneral = "com.talo.Wifi1.General";

/// The general interface over a pair, and a call of DeleteNetwork(7) or CreateNetwork of it.
class Endpoints : public testing::Test {
 protected:
  Endpoints() { general_.Attach(pair_.Server()); }

  std::uint64_t SendDelete() {
    const Bus::Message call = pair_.NewCall(kGeneral, "DeleteNetwork");
    Bus::Codec<int>::Append(call.get(), 7);
    return pair_.Send(call.get());
  }

  std::uint64_t SendCreate() {
    const Bus::Message call = pair_.NewCall(kGeneral, "CreateNetwork");
    Bus::Codec<Wifi::NetworkCreateInfo>::Append(call.get(), {"Name", "Home", "battery-staple"});
    return pair_.Send(call.get());
  }

  /// Expects this one answer to the call, once and for all.
  void ExpectOneError(std::uint64_t cookie, const std::string& error) {
    EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(cookie)), error);
    pair_.RunUntilQuiet();
    EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
  }

  BusInterface<Bus::General> general_{AdmitAll};
  BusPair pair_;
};

TEST_F(Endpoints, AnswerAtOnce) {
  std::vector<Wifi::NetworkCreateInfo> asked;
  general_.Handle<&WifiClient::CreateNetwork>([&asked](const auto& info, const auto& respond) {
    asked.push_back(info);
    respond(12);
  });
  const auto cookie = SendCreate();
  sd_bus_message* answer = pair_.WaitForAnswer(cookie);
  ASSERT_EQ(ErrorOf(answer), "none");
  EXPECT_EQ(SignatureOf(answer), "i");
  EXPECT_EQ(Bus::Codec<int>::Read(answer), 12);
  EXPECT_EQ(asked, (std::vector<Wifi::NetworkCreateInfo>{{"Name", "Home", "battery-staple"}}));
  pair_.RunUntilQuiet();
  EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
}

TEST_F(Endpoints, AnswerWithNothingWhereThereIsNoResult) {
  std::vector<int> asked;
  general_.Handle<&WifiClient::DeleteNetwork>([&asked](int id, const auto& respond) {
    asked.push_back(id);
    respond({});
  });
  const auto cookie = SendDelete();
  sd_bus_message* answer = pair_.WaitForAnswer(cookie);
  EXPECT_EQ(ErrorOf(answer), "none");
  EXPECT_EQ(SignatureOf(answer), "");
  EXPECT_EQ(asked, std::vector<int>{7});
}

TEST_F(Endpoints, AnswerLaterAndOthersMeanwhile) {
  std::vector<Responder<int>> waiting;
  general_.Handle<&WifiClient::CreateNetwork>(
      [&waiting](const auto&, const auto& respond) { waiting.push_back(respond); });
  general_.Handle<&WifiClient::DeleteNetwork>([](int, const auto& respond) { respond({}); });
  const auto first = SendCreate();
  const auto second = SendCreate();
  EXPECT_EQ(ErrorOf(pair_.WaitForAnswer(SendDelete())), "none");
  EXPECT_EQ(pair_.CountAnswers(first), 0U);
  EXPECT_EQ(pair_.CountAnswers(second), 0U);
  ASSERT_EQ(waiting.size(), 2U);

  waiting[1](22);
  sd_bus_message* answer = pair_.WaitForAnswer(second);
  ASSERT_EQ(ErrorOf(answer), "none");
  EXPECT_EQ(Bus::Codec<int>::Read(answer), 22);
  EXPECT_EQ(pair_.CountAnswers(first), 0U);

  waiting[0](11);
  answer = pair_.WaitForAnswer(first);
  ASSERT_EQ(ErrorOf(answer), "none");
  EXPECT_EQ(Bus::Codec<int>::Read(answer), 11);
}

TEST_F(Endpoints, CountOnlyTheFirstAnswer) {
  general_.Handle<&WifiClient::CreateNetwork>([](const auto&, const auto& respond) {
    const std::vector<Responder<int>> copies = {respond};
    respond(1);
    respond(2);
    copies[0](Refusal{ErrorCode::NotFound, "too late"});
  });
  const auto cookie = SendCreate();
  sd_bus_message* answer = pair_.WaitForAnswer(cookie);
  ASSERT_EQ(ErrorOf(answer), "none");
  EXPECT_EQ(Bus::Codec<int>::Read(answer), 1);
  pair_.RunUntilQuiet();
  EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
}

TEST_F(Endpoints, CountOnlyTheFirstRefusal) {
  general_.Handle<&WifiClient::DeleteNetwork>([](int, const auto& respond) {
    respond(Refusal{ErrorCode::Busy, "not now"});
    respond({});
    respond(Refusal{ErrorCode::NotFound, "too late"});
  });
  ExpectOneError(SendDelete(), "com.talo.Wifi1.Error.Busy: not now");
}

TEST_F(Endpoints, RefuseACallThatTheHandlerDropped) {
  general_.Handle<&WifiClient::DeleteNetwork>([](int, const auto&) {});
  ExpectOneError(SendDelete(),
                 "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: the call was dropped");
}

TEST_F(Endpoints, RefuseACallThatIsDroppedLater) {
  std::optional<Responder<void>> waiting;
  general_.Handle<&WifiClient::DeleteNetwork>([&waiting](int, const auto& respond) { waiting = respond; });
  const auto cookie = SendDelete();
  pair_.RunUntilQuiet();
  ASSERT_TRUE(waiting.has_value());
  EXPECT_EQ(pair_.CountAnswers(cookie), 0U);
  waiting.reset();
  ExpectOneError(cookie, "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: the call was dropped");
}

TEST_F(Endpoints, RefuseByTheNameAndTheSentenceOfTheReason) {
  const std::vector<std::pair<ErrorCode, std::string>> rows = {
      {ErrorCode::InvalidArgument, "com.talo.Wifi1.Error.InvalidArgument"},
      {ErrorCode::NotFound, "com.talo.Wifi1.Error.NotFound"},
      {ErrorCode::AlreadyExists, "com.talo.Wifi1.Error.AlreadyExists"},
      {ErrorCode::NotSupported, "com.talo.Wifi1.Error.NotSupported"},
      {ErrorCode::NotAllowed, "com.talo.Wifi1.Error.NotAllowed"},
      {ErrorCode::Busy, "com.talo.Wifi1.Error.Busy"},
      {ErrorCode::LimitReached, "com.talo.Wifi1.Error.LimitReached"},
      {ErrorCode::RadioFailed, "com.talo.Wifi1.Error.RadioFailed"},
      {ErrorCode::StorageFailed, "com.talo.Wifi1.Error.StorageFailed"},
  };
  ErrorCode code{};
  general_.Handle<&WifiClient::DeleteNetwork>([&code](int, const auto& respond) {
    respond(Refusal{code, "100% \"sure\" %s %n caf\xc3\xa9"});
  });
  for (const auto& [refusal, name] : rows) {
    code = refusal;
    ExpectOneError(SendDelete(), name + ": 100% \"sure\" %s %n caf\xc3\xa9");
  }
}

TEST_F(Endpoints, AnswerEvenWhenTheReasonHasNoNameOnTheBus) {
  general_.Handle<&WifiClient::DeleteNetwork>([](int, const auto& respond) {
    respond(Refusal{ErrorCode::Unexpected, "nobody knows"});
  });
  ExpectOneError(SendDelete(), "org.freedesktop.DBus.Error.Failed: nobody knows");
}

TEST_F(Endpoints, RefuseAnOperationWithoutAHandler) {
  ExpectOneError(SendDelete(),
                 "com.talo.Wifi1.Error.NotSupported: the wifi daemon does not support DeleteNetwork yet");
}

TEST_F(Endpoints, RefuseArgumentsThatAreNoValues) {
  int calls = 0;
  general_.Handle<&WifiClient::SetMACFilterGlobal>([&calls](const auto&, const auto& respond) {
    ++calls;
    respond({});
  });
  for (const std::string address : {"02:00:00:00:00:0g", "", "02:00:00:00:00"}) {
    const Bus::Message call = pair_.NewCall(kGeneral, "SetMACFilterGlobal");
    ASSERT_GE(sd_bus_message_append(call.get(), "(a(ss)bi)", 1, "Phone", address.c_str(), 1, 10), 0);
    ExpectOneError(
        pair_.Send(call.get()),
        "com.talo.Wifi1.Error.InvalidArgument: SetMACFilterGlobal: Invalid MAC address: " + address);
  }
  EXPECT_EQ(calls, 0);
}

TEST_F(Endpoints, AnswerOnceWhenTheHandlerFails) {
  general_.Handle<&WifiClient::DeleteNetwork>(
      [](int, const auto&) { throw std::runtime_error("no 100% luck"); });
  ExpectOneError(SendDelete(), "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: no 100% luck");
}

TEST_F(Endpoints, AnswerEvenWhenTheFailureIsNotUTF8) {
  general_.Handle<&WifiClient::DeleteNetwork>(
      [](int, const auto&) { throw std::runtime_error("no \xff luck"); });
  ExpectOneError(SendDelete(),
                 "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: no \xef\xbf\xbd luck");
}

TEST_F(Endpoints, KeepTheAnswerOfAHandlerThatFailsAfterIt) {
  general_.Handle<&WifiClient::DeleteNetwork>([](int, const auto& respond) {
    respond(Refusal{ErrorCode::NotFound, "there is no network 7"});
    throw std::runtime_error("no luck");
  });
  ExpectOneError(SendDelete(), "com.talo.Wifi1.Error.NotFound: there is no network 7");
}

TEST_F(Endpoints, AnswerOnceWhenAHandlerFailsThatKeptTheCall) {
  std::optional<Responder<void>> waiting;
  general_.Handle<&WifiClient::DeleteNetwork>([&waiting](int, const auto& respond) {
    waiting = respond;
    throw std::runtime_error("no luck");
  });
  const auto cookie = SendDelete();
  ExpectOneError(cookie, "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: no luck");
  ASSERT_TRUE(waiting.has_value());
  (*waiting)({});
  pair_.RunUntilQuiet();
  EXPECT_EQ(pair_.CountAnswers(cookie), 1U);
}

TEST_F(Endpoints, AnswerAnErrorForAResultThatCannotTravel) {
  general_.Handle<&WifiClient::GetStationInterfaces>([](const auto& respond) {
    respond(std::map<RadioFrequency, std::string>{{RadioFrequency::Band5GHz, "bad\xff"}});
  });
  const Bus::Message call = pair_.NewCall(kGeneral, "GetStationInterfaces");
  ExpectOneError(pair_.Send(call.get()),
                 "org.freedesktop.DBus.Error.Failed: the wifi daemon failed: the text \"bad\xef\xbf\xbd\" is "
                 "not UTF-8");
}

TEST_F(Endpoints, SayNothingToACallerThatWantsNoAnswer) {
  int calls = 0;
  general_.Handle<&WifiClient::DeleteNetwork>([&calls](int, const auto& respond) {
    ++calls;
    respond({});
  });
  const Bus::Message call = pair_.NewCall(kGeneral, "DeleteNetwork");
  Bus::Codec<int>::Append(call.get(), 7);
  ASSERT_GE(sd_bus_message_set_expect_reply(call.get(), 0), 0);
  const auto cookie = pair_.Send(call.get());
  pair_.RunUntilQuiet();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(pair_.CountAnswers(cookie), 0U);
}

}  // namespace

}  // namespace TALO::Wifid
