#include "bus/connection.h"

#include "support/bus_peer.h"
#include "support/print.h"
#include "support/thrown.h"

#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace TALO::Wifi::Bus {

namespace {

using namespace std::chrono_literals;  // NOLINT(google-build-using-namespace)

/// Longer than anything takes that is not meant to fail.
constexpr auto kLong = 30s;
/// Of calls that nobody answers.
constexpr auto kShort = 50ms;

/// A connection with a peer at its other end.
class ConnectionTest : public testing::Test {
 protected:
  Connection& Connect(std::chrono::microseconds deadline = kLong) {
    auto [client, server] = ConnectedSockets();
    peer_.emplace(std::move(server));
    connection_ = std::make_unique<Connection>(StartClient(std::move(client)), deadline);
    return *connection_;
  }
  PeerScript& Peer() { return peer_->Script(); }

  std::optional<BusPeer> peer_;
  std::unique_ptr<Connection> connection_;
};

template <typename T>
Answer ReplyWithValue(const T& value) {
  return ReplyWith([value](sd_bus_message* reply) { Codec<T>::Append(reply, value); });
}

const Thrown kBusGone = {Thrown::Failure, ErrorCode::DaemonGone,
                         "the bus went away before the wifi daemon answered (GetContext): Daemon gone"};
const Thrown kNoAnswer = {Thrown::Failure, ErrorCode::NoAnswer,
                          "the wifi daemon did not answer in time (GetContext): No answer"};

Thrown BadReply(const std::string& operation, const std::string& reason) {
  return {Thrown::Failure, ErrorCode::BadReply,
          "the answer of the wifi daemon to " + operation + " cannot be read (" + reason + "): Bad reply"};
}

Thrown CallGetContext(Connection& connection) {
  return Catch([&] { connection.Call<&WifiClientForTopo::GetContext>(); });
}

TEST_F(ConnectionTest, CallsTheDaemonsObject) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWithValue<int>(7));
  EXPECT_EQ(connection.Call<&WifiClient::CreateNetwork>(NetworkCreateInfo{"Home", "Home", "correct-horse"}),
            7);
  EXPECT_EQ(Peer().Calls(),
            (std::vector<ReceivedCall>{{"com.talo.Wifi1", "/com/talo/Wifi1", "com.talo.Wifi1.General",
                                        "CreateNetwork", "(ayayay)"}}));
  EXPECT_TRUE(connection.IsOpen());
}

TEST_F(ConnectionTest, HandsEveryErrorOfTheDaemonToTheCaller) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWithError("com.talo.Wifi1.Error.NotFound", "network 7 is unknown"));
  EXPECT_EQ(Catch([&] { connection.Call<&WifiClient::DeleteNetwork>(7); }),
            (Thrown{Thrown::Refusal, ErrorCode::NotFound, "network 7 is unknown: Not found"}));
  Peer().SetAnswer(ReplyWithError("org.freedesktop.DBus.Error.ServiceUnknown", "no such name"));
  EXPECT_EQ(CallGetContext(connection),
            (Thrown{Thrown::Failure, ErrorCode::DaemonNotRunning,
                    "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running"}));
  Peer().SetAnswer(ReplyWithError("com.example.Odd", ""));
  EXPECT_EQ(CallGetContext(connection),
            (Thrown{Thrown::Failure, ErrorCode::Unexpected,
                    "GetContext failed on the bus: com.example.Odd: Unexpected error"}));
}

TEST_F(ConnectionTest, GoesOnAfterAnError) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWithError("com.talo.Wifi1.Error.Busy", "not now"));
  EXPECT_EQ(CallGetContext(connection), (Thrown{Thrown::Refusal, ErrorCode::Busy, "not now: Busy"}));
  EXPECT_TRUE(connection.IsOpen());
  Peer().SetAnswer(ReplyWithValue<std::string>("router"));
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "router");
}

TEST_F(ConnectionTest, RefusesAReplyOfAnotherTypeToAnyOperation) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWith([](sd_bus_message* reply) {
    // A type that no operation has.
    MustSucceed(sd_bus_message_append(reply, "t", std::uint64_t{1}));
  }));
  const auto check = [&connection](auto row) {
    using Row = decltype(row);
    const std::string expected = Row::ResultCodec::signature.text;
    const typename Row::Arguments arguments{};
    EXPECT_EQ(Catch([&] {
                std::apply([&](const auto&... each) { connection.Call<Row::method>(each...); }, arguments);
              }),
              BadReply(Row::name.text, R"(it holds "t" instead of ")" + expected + "\""));
  };
  General::ForEach(check);
  Mesh::ForEach(check);
  Topology::ForEach(check);
  Tool::ForEach(check);
}

TEST_F(ConnectionTest, RefusesAReplyThatHoldsTooMuchOrNothing) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWith(
      [](sd_bus_message* reply) { MustSucceed(sd_bus_message_append(reply, "ss", "router", "bridge")); }));
  EXPECT_EQ(CallGetContext(connection), BadReply("GetContext", R"(it holds "ss" instead of "s")"));
  Peer().SetAnswer(ReplyWith([](sd_bus_message*) {}));
  EXPECT_EQ(CallGetContext(connection), BadReply("GetContext", R"(it holds "" instead of "s")"));
}

TEST_F(ConnectionTest, RefusesAReplyWithAMACAddressThatIsNone) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWith([](sd_bus_message* reply) {
    MustSucceed(sd_bus_message_append(reply, "(a(ss)bi)", 1, "phone", "02:00:00:00:00", 1, 5));
  }));
  EXPECT_EQ(Catch([&] { connection.Call<&WifiClient::GetMACFilterGlobal>(); }),
            BadReply("GetMACFilterGlobal", "Invalid MAC address: 02:00:00:00:00"));
}

TEST_F(ConnectionTest, RefusesARepliesBodyThatIsTorn) {
  using namespace std::string_literals;  // NOLINT(google-build-using-namespace)
  Connection& connection = Connect();
  const std::vector<std::pair<const char*, std::string>> bodies = {
      {"nothing", ""s},
      {"half of a length", "\x06\0"s},
      {"a text longer than the body", "\x06\0\0\0rout"s},
      {"a text of all the memory", "\xFF\xFF\xFF\xFFrouter\0"s},
      {"a text without its zero", "\x06\0\0\0routerX"s},
      {"a text with a zero inside", "\x06\0\0\0rou\0er\0"s},
      {"a text that is not UTF-8", "\x06\0\0\0route\xFF\0"s}};
  for (const auto& [what, body] : bodies) {
    SCOPED_TRACE(what);
    Peer().SetAnswer(ReplyWithRawBody("s", body));
    EXPECT_EQ(CallGetContext(connection), BadReply("GetContext", "Bad message"));
    EXPECT_TRUE(connection.IsOpen());
  }
  Peer().SetAnswer(ReplyWithRawBody("s", "\x06\0\0\0router\0"s));
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "router");
}

TEST_F(ConnectionTest, RefusesATornArray) {
  using namespace std::string_literals;  // NOLINT(google-build-using-namespace)
  Connection& connection = Connect();
  const std::vector<std::pair<const char*, std::string>> bodies = {
      {"longer than the body", "\x08\0\0\0\x01\0\0\0"s},
      {"of all the memory", "\xFC\xFF\xFF\xFF\x01\0\0\0"s},
      {"that ends inside an element", "\x06\0\0\0\x01\0\0\0\x02\0"s}};
  for (const auto& [what, body] : bodies) {
    SCOPED_TRACE(what);
    Peer().SetAnswer(ReplyWithRawBody("ai", body));
    EXPECT_EQ(Catch([&] { connection.Call<&WifiClientForTopo::GetActivatedIdsForTopo>(); }),
              BadReply("GetActivatedIdsForTopo", "Bad message"));
  }
}

TEST_F(ConnectionTest, SendsNothingWhereATextCannotTravel) {
  Connection& connection = Connect();
  EXPECT_EQ(Catch([&] { connection.Call<&WifiClientForTopo::SetContext>(std::string("caf\xE9")); }),
            (Thrown{Thrown::Refusal, ErrorCode::InvalidArgument,
                    "SetContext: the text \"caf\xEF\xBF\xBD\" is not UTF-8: Invalid argument"}));
  EXPECT_EQ(
      Catch([&] {
        connection.Call<&WifiClientForTopo::Activate>(ActivationInfo{7, "br\xEF\xBF\xBF"});
      }),
      (Thrown{
          Thrown::Refusal, ErrorCode::InvalidArgument,
          "Activate: the text \"br\xEF\xBF\xBF\" holds a character that cannot be sent: Invalid argument"}));
  Peer().SetAnswer(ReplyWithValue<std::string>("router"));
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "router");
  EXPECT_EQ(Peer().Calls(), (std::vector<ReceivedCall>{{"com.talo.Wifi1", "/com/talo/Wifi1",
                                                        "com.talo.Wifi1.Topology", "GetContext", ""}}));
}

TEST_F(ConnectionTest, NoticesThatTheBusWentAwayInsteadOfAnAnswer) {
  Connection& connection = Connect();
  Peer().SetAnswer([](sd_bus_message*) { return false; });
  EXPECT_EQ(CallGetContext(connection), kBusGone);
  EXPECT_FALSE(connection.IsOpen());
}

TEST_F(ConnectionTest, FailsEveryCallAfterTheBusWentAway) {
  Connection& connection = Connect();
  Peer().SetAnswer([](sd_bus_message*) { return false; });
  CallGetContext(connection);
  EXPECT_EQ(CallGetContext(connection), kBusGone);
  EXPECT_EQ(CallGetContext(connection), kBusGone);
}

TEST_F(ConnectionTest, NoticesThatTheBusWentAwayBetweenTwoCalls) {
  Connection& connection = Connect();
  Peer().SetAnswer(ReplyWithValue<std::string>("router"));
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "router");
  peer_.reset();
  EXPECT_EQ(CallGetContext(connection), kBusGone);
  EXPECT_FALSE(connection.IsOpen());
}

TEST_F(ConnectionTest, GivesUpOnADaemonThatStaysSilent) {
  Connection& connection = Connect(kShort);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(CallGetContext(connection), kNoAnswer);
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_GE(elapsed, kShort);
  EXPECT_LT(elapsed, kLong);
  EXPECT_TRUE(connection.IsOpen());
}

TEST_F(ConnectionTest, DoesNotTakeALateAnswerForThatOfTheNextCall) {
  Connection& connection = Connect(500ms);
  // The peer may be busy with it when the test is over.
  const auto unanswered = std::make_shared<Message>();
  Peer().SetAnswer([unanswered](sd_bus_message* call) {
    unanswered->reset(sd_bus_message_ref(call));
    return true;
  });
  EXPECT_EQ(CallGetContext(connection), kNoAnswer);
  Peer().SetAnswer([unanswered](sd_bus_message* call) {
    SendReply(unanswered->get(), [](sd_bus_message* reply) { Codec<std::string>::Append(reply, "late"); });
    SendReply(call, [](sd_bus_message* reply) { Codec<std::string>::Append(reply, "in time"); });
    unanswered->reset();
    return true;
  });
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "in time");
}

TEST_F(ConnectionTest, PassesOverASignalThatComesBeforeTheAnswer) {
  Connection& connection = Connect();
  Peer().SetAnswer([](sd_bus_message* call) {
    MustSucceed(sd_bus_emit_signal(sd_bus_message_get_bus(call), "/com/talo/Wifi1", "com.example.Other",
                                   "Changed", "s", "x"));
    SendReply(call, [](sd_bus_message* reply) { Codec<std::string>::Append(reply, "router"); });
    return true;
  });
  EXPECT_EQ(connection.Call<&WifiClientForTopo::GetContext>(), "router");
}

TEST_F(ConnectionTest, ReadsTextProperties) {
  Connection& connection = Connect();
  Peer().SetAnswer(
      ReplyWith([](sd_bus_message* reply) { MustSucceed(sd_bus_message_append(reply, "v", "s", "info")); }));
  EXPECT_EQ(connection.GetTextProperty("/a/path", "com.example.Interface", "Level"), "info");
  EXPECT_EQ(Peer().Calls(), (std::vector<ReceivedCall>{{"com.talo.Wifi1", "/a/path",
                                                        "org.freedesktop.DBus.Properties", "Get", "ss"}}));
}

TEST_F(ConnectionTest, RefusesAPropertyThatIsNoText) {
  Connection& connection = Connect();
  Peer().SetAnswer(
      ReplyWith([](sd_bus_message* reply) { MustSucceed(sd_bus_message_append(reply, "v", "i", 7)); }));
  EXPECT_EQ(Catch([&] { connection.GetTextProperty("/p", "com.example.I", "Level"); }),
            BadReply("Level", R"(it holds "i" instead of "s")"));
  Peer().SetAnswer(ReplyWithValue<std::string>("info"));
  EXPECT_EQ(Catch([&] { connection.GetTextProperty("/p", "com.example.I", "Level"); }),
            BadReply("Level", R"(it holds "s" instead of "v")"));
  Peer().SetAnswer(ReplyWithError("org.freedesktop.DBus.Error.UnknownProperty", "none"));
  EXPECT_EQ(Catch([&] { connection.GetTextProperty("/p", "com.example.I", "Level"); }),
            (Thrown{Thrown::Failure, ErrorCode::UnknownOperation,
                    "the wifi daemon does not know the operation; is it of another version? (Level): Unknown "
                    "operation"}));
}

/// A bus that does not come up, or goes down badly.
class BrokenBus : public testing::Test {
 protected:
  static Thrown Unreachable(const std::string& reason) {
    return {Thrown::Failure, ErrorCode::BusUnavailable,
            "the system bus cannot be reached (" + reason + "): Bus unavailable"};
  }
};

TEST_F(BrokenBus, IsGivenUpWhenItAcceptsAndSaysNothing) {
  auto [client, server] = ConnectedSockets();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Catch([&client = client] { Connection(StartClient(std::move(client)), kShort); }),
            Unreachable("Connection timed out"));
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_GE(elapsed, kShort);
  EXPECT_LT(elapsed, kLong);
}

TEST_F(BrokenBus, IsReportedWhenItClosesAtOnce) {
  auto [client, server] = ConnectedSockets();
  BusHandle bus = StartClient(std::move(client));
  shutdown(server.Get(), SHUT_RDWR);
  EXPECT_EQ(Catch([&bus] { Connection(std::move(bus), kLong); }), Unreachable("Connection reset by peer"));
}

TEST_F(BrokenBus, IsReportedWhenItRefusesTheUser) {
  auto [client, server] = ConnectedSockets();
  const std::string refusal = "REJECTED\r\nREJECTED\r\nREJECTED\r\n";
  ASSERT_EQ(write(server.Get(), refusal.data(), refusal.size()), static_cast<ssize_t>(refusal.size()));
  EXPECT_EQ(Catch([&client = client] { Connection(StartClient(std::move(client)), kLong); }),
            Unreachable("Operation not permitted"));
}

TEST_F(BrokenBus, DoesNotHoldUpTheEndOfAConnectionThatItNoLongerReads) {
  auto [client, server] = ConnectedSockets();
  BusPeer peer(std::move(server));
  std::promise<void> wake;
  peer.Script().SetAnswer([woken = wake.get_future().share()](sd_bus_message*) {
    woken.wait();
    return true;
  });
  auto connection = std::make_unique<Connection>(StartClient(std::move(client)), kShort);
  EXPECT_EQ(CallGetContext(*connection), kNoAnswer);
  // More than the socket takes while nobody reads.
  const std::string large(std::size_t{16} << 20U, 'x');
  EXPECT_EQ(Catch([&] { connection->Call<&WifiClientForTopo::SetContext>(large); }).code,
            make_error_code(ErrorCode::NoAnswer));
  auto ended = std::async(std::launch::async, [&connection] { connection.reset(); });
  EXPECT_EQ(ended.wait_for(10s), std::future_status::ready);
  wake.set_value();
}

}  // namespace

}  // namespace TALO::Wifi::Bus
