#include "daemon/system/unix_control_sockets.h"

#include "support/descriptors.h"
#include "support/loop_run.h"
#include "support/manual_timers.h"
#include "support/temporary_directory.h"
#include "support/unix_listener.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using EndToEnd::Descriptor;
using std::chrono::milliseconds;
using std::chrono::seconds;
using Texts = std::vector<std::string>;

/// A program with a control socket, which does what the test says.
class Program {
 public:
  explicit Program(std::string path) : path_(std::move(path)), socket_(Bind()) {}

  struct Asked {
    std::string text;
    sockaddr_un address;
    socklen_t length;
  };

  /// The next request, waited for.
  Asked Take() {
    EndToEnd::WaitUntilReadable(socket_.Get(), "a request");
    Asked asked{std::string(65536, '\0'), {}, sizeof(sockaddr_un)};
    const ssize_t got = recvfrom(socket_.Get(), asked.text.data(), asked.text.size(), 0,
                                 reinterpret_cast<sockaddr*>(&asked.address), &asked.length);
    asked.text.resize(static_cast<std::size_t>(got));
    return asked;
  }

  bool HasRequest() const {
    char first = 0;
    return recv(socket_.Get(), &first, 1, MSG_PEEK | MSG_DONTWAIT) >= 0;
  }

  /// False when nobody is there any more.
  bool Say(const Asked& to, const std::string& text) { return SendTo(socket_, to, text); }

  static bool SendTo(const Descriptor& from, const Asked& to, const std::string& text) {
    return sendto(from.Get(), text.data(), text.size(), MSG_DONTWAIT,
                  reinterpret_cast<const sockaddr*>(&to.address), to.length) >= 0;
  }

  /// Ends, its path stays.
  void End() { socket_ = Descriptor(); }
  void StartAnew() {
    std::remove(path_.c_str());
    socket_ = Bind();
  }

 private:
  Descriptor Bind() const { return EndToEnd::BindUnixSocket(SOCK_DGRAM, path_); }

  std::string path_;
  Descriptor socket_;
};

class UnixControlSocketsTest : public testing::Test {
 protected:
  std::unique_ptr<ControlSocket> Connect() {
    auto connected = sockets_.Connect(path_, [this](const std::string& text) { messages_.push_back(text); });
    return connected.Succeeded() ? std::move(connected.Value()) : nullptr;
  }

  ControlSocket::Answer Note() {
    return [this](const Result<std::string>& answer) {
      answers_.push_back(answer.Succeeded() ? answer.Value() : "refused: " + answer.Why().sentence);
    };
  }

  void UntilAnswers(std::size_t count) {
    run_.Until("an answer", [this, count] { return answers_.size() >= count; });
  }

  std::string RefusalOf(const std::string& path) {
    const auto connected = sockets_.Connect(path, {});
    EXPECT_FALSE(connected.Succeeded());
    EXPECT_EQ(connected.Why().code, ErrorCode::RadioFailed);
    return connected.Why().sentence;
  }

  TemporaryDirectory directory_;
  const std::string path_ = directory_ / "hostapd";
  const std::string unanswered_ = "refused: the program at " + path_ + " has not answered within 10 seconds";
  LoopRun run_;
  ManualTimers timers_;
  UnixControlSockets sockets_{run_.Get(), timers_};
  Program program_{path_};
  Texts answers_;
  Texts messages_;
};

TEST_F(UnixControlSocketsTest, CarryRequestsAndTheirAnswersInOrder) {
  const auto socket = Connect();
  EXPECT_FALSE(program_.HasRequest());
  socket->Request("PING", Note());
  socket->Request("STATUS", Note());
  const auto ping = program_.Take();
  EXPECT_EQ(ping.text, "PING");
  // An answer does not say what it answers, so the next request waits for it.
  run_.TurnWhileReady();
  EXPECT_FALSE(program_.HasRequest());
  program_.Say(ping, "PONG\n");
  UntilAnswers(1);
  const auto status = program_.Take();
  EXPECT_EQ(status.text, "STATUS");
  program_.Say(status, "state=ENABLED\nphy=phy0\n");
  UntilAnswers(2);
  EXPECT_EQ(answers_, (Texts{"PONG\n", "state=ENABLED\nphy=phy0\n"}));
}

TEST_F(UnixControlSocketsTest, CarryEmptyAndLongAnswers) {
  const auto socket = Connect();
  for (const std::string& answer : {std::string(), std::string(40000, 'x'), std::string("a\0b", 3)}) {
    socket->Request("INTERFACES", Note());
    program_.Say(program_.Take(), answer);
    UntilAnswers(1);
    EXPECT_EQ(answers_, Texts{answer});
    answers_.clear();
  }
}

TEST_F(UnixControlSocketsTest, PassOnMessagesOnceAsked) {
  const auto socket = Connect();
  socket->Request("ATTACH", Note());
  const auto attach = program_.Take();
  EXPECT_EQ(attach.text, "ATTACH");
  // Whatever comes first: the answer is told from the messages.
  program_.Say(attach, "<3>AP-ENABLED ");
  program_.Say(attach, "IFNAME=wlan0 <3>AP-DISABLED ");
  program_.Say(attach, "OK\n");
  UntilAnswers(1);
  program_.Say(attach, "<3>AP-STA-CONNECTED 02:00:00:00:01:00");
  run_.Until("a message", [this] { return messages_.size() >= 3; });
  EXPECT_EQ(answers_, Texts{"OK\n"});
  EXPECT_EQ(messages_, (Texts{"<3>AP-ENABLED ", "IFNAME=wlan0 <3>AP-DISABLED ",
                              "<3>AP-STA-CONNECTED 02:00:00:00:01:00"}));
}

TEST_F(UnixControlSocketsTest, TellAnswersFromMessagesThatComeMeanwhile) {
  const auto socket = Connect();
  socket->Request("ATTACH", Note());
  const auto attach = program_.Take();
  program_.Say(attach, "OK\n");
  UntilAnswers(1);
  socket->Request("GET_CONFIG", Note());
  const auto request = program_.Take();
  program_.Say(attach, "<3>AP-ENABLED ");
  run_.Until("a message", [this] { return !messages_.empty(); });
  EXPECT_EQ(answers_.size(), 1U);
  program_.Say(request, "<3>what an answer may begin with");
  UntilAnswers(2);
  EXPECT_EQ(answers_.back(), "<3>what an answer may begin with");
  EXPECT_EQ(messages_, Texts{"<3>AP-ENABLED "});
}

TEST_F(UnixControlSocketsTest, GiveUpAfterTenSeconds) {
  const auto socket = Connect();
  socket->Request("PING", Note());
  program_.Take();
  timers_.Advance(milliseconds(9999));
  EXPECT_EQ(answers_, Texts{});
  timers_.Advance(milliseconds(1));
  EXPECT_EQ(answers_, Texts{unanswered_});
}

TEST_F(UnixControlSocketsTest, GiveEachRequestItsTenSeconds) {
  const auto socket = Connect();
  socket->Request("ADD", Note());
  socket->Request("PING", Note());
  const auto add = program_.Take();
  timers_.Advance(seconds(9));
  program_.Say(add, "OK\n");
  UntilAnswers(1);
  const auto ping = program_.Take();
  timers_.Advance(seconds(9));
  program_.Say(ping, "PONG\n");
  UntilAnswers(2);
  EXPECT_EQ(answers_, (Texts{"OK\n", "PONG\n"}));
  EXPECT_EQ(timers_.CountWaiting(), 0U);
}

TEST_F(UnixControlSocketsTest, TakeNoLateAnswerForTheNext) {
  const auto socket = Connect();
  for (const std::string request : {"SLOW", "ATTACH"}) {
    answers_.clear();
    socket->Request(request, Note());
    const auto late = program_.Take();
    timers_.Advance(seconds(10));
    EXPECT_EQ(answers_, Texts{unanswered_});
    socket->Request(request, Note());
    EXPECT_FALSE(program_.Say(late, "late\n"));
    run_.TurnWhileReady();
    EXPECT_EQ(answers_.size(), 1U);
    program_.Say(program_.Take(), "in time\n");
    UntilAnswers(2);
    EXPECT_EQ(answers_.back(), "in time\n");
  }
}

TEST_F(UnixControlSocketsTest, SayWhenNobodyListens) {
  EXPECT_EQ(RefusalOf(directory_ / "missing"),
            "nobody listens at " + (directory_ / "missing") + ": No such file or directory");
  program_.End();
  EXPECT_EQ(RefusalOf(path_), "nobody listens at " + path_ + ": Connection refused");
  const std::string longPath = "/" + std::string(200, 'x');
  EXPECT_EQ(RefusalOf(longPath), "nobody listens at " + longPath + ": File name too long");
}

TEST_F(UnixControlSocketsTest, SayWhenTheProgramIsGoneAndStaySoAndNeverFromInsideTheCall) {
  const auto socket = Connect();
  program_.End();
  socket->Request("PING", Note());
  socket->Request("STATUS", Note());
  socket->Request("ATTACH", Note());
  EXPECT_EQ(answers_, Texts{});
  timers_.Advance(seconds(0));
  EXPECT_EQ(answers_, (Texts{"refused: the program at " + path_ + " is gone: Connection refused",
                             "refused: the program at " + path_ + " is gone",
                             "refused: the program at " + path_ + " is gone: Connection refused"}));
  // Another that listens there knows nothing of what this one was told.
  program_.StartAnew();
  socket->Request("PING", Note());
  timers_.Advance(seconds(0));
  EXPECT_EQ(answers_.back(), "refused: the program at " + path_ + " is gone");
  EXPECT_FALSE(program_.HasRequest());
}

TEST_F(UnixControlSocketsTest, GiveUpOnAProgramThatEndsInsteadOfAnswering) {
  const auto socket = Connect();
  socket->Request("TERMINATE", Note());
  program_.Take();
  program_.End();
  run_.TurnWhileReady();
  timers_.Advance(seconds(10));
  socket->Request("PING", Note());
  timers_.Advance(seconds(0));
  EXPECT_EQ(answers_, (Texts{unanswered_, "refused: the program at " + path_ + " is gone"}));
}

TEST_F(UnixControlSocketsTest, WaitForAProgramThatTakesNoMoreNow) {
  const auto socket = Connect();
  // Somebody else fills its queue.
  const Descriptor other = EndToEnd::BindUnixSocket(SOCK_DGRAM, directory_ / "other");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path_.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  int filled = 0;
  while (sendto(other.Get(), "x", 1, MSG_DONTWAIT, reinterpret_cast<const sockaddr*>(&address),
                sizeof address) == 1) {
    ++filled;
  }
  ASSERT_EQ(errno, EAGAIN);
  socket->Request("PING", Note());
  run_.TurnWhileReady();
  for (int taken = 0; taken < filled; ++taken) {
    EXPECT_EQ(program_.Take().text, "x");
  }
  std::optional<Program::Asked> asked;
  run_.Until("the request", [&] { return program_.HasRequest(); });
  asked = program_.Take();
  EXPECT_EQ(asked->text, "PING");
  program_.Say(*asked, "PONG\n");
  UntilAnswers(1);
  run_.TurnWhileReady();
  EXPECT_FALSE(program_.HasRequest());
  EXPECT_EQ(answers_, Texts{"PONG\n"});
}

TEST_F(UnixControlSocketsTest, RefuseARequestThatIsTooLongAndGoOn) {
  const auto socket = Connect();
  socket->Request(std::string(10000000, 'x'), Note());
  timers_.Advance(seconds(0));
  EXPECT_EQ(answers_,
            Texts{"refused: the program at " + path_ + " does not take a request: Message too long"});
  socket->Request("PING", Note());
  program_.Say(program_.Take(), "PONG\n");
  UntilAnswers(2);
  EXPECT_EQ(answers_.back(), "PONG\n");
}

TEST_F(UnixControlSocketsTest, HearNobodyElse) {
  const auto socket = Connect();
  socket->Request("ATTACH", Note());
  const auto attach = program_.Take();
  const Descriptor other = EndToEnd::BindUnixSocket(SOCK_DGRAM, directory_ / "other");
  EXPECT_FALSE(Program::SendTo(other, attach, "<3>AP-ENABLED "));
  EXPECT_EQ(errno, EPERM);
  program_.Say(attach, "OK\n");
  UntilAnswers(1);
  EXPECT_EQ(messages_, Texts{});
}

TEST_F(UnixControlSocketsTest, DropWhatIsUnansweredAtTheirEnd) {
  auto socket = Connect();
  socket->Request("PING", Note());
  socket->Request("STATUS", Note());
  const auto ping = program_.Take();
  socket.reset();
  EXPECT_FALSE(program_.Say(ping, "PONG\n"));
  timers_.Advance(seconds(20));
  run_.TurnWhileReady();
  EXPECT_EQ(answers_, Texts{});
}

TEST_F(UnixControlSocketsTest, MayBeDestroyedAndAskedFromAnAnswer) {
  auto socket = Connect();
  socket->Request("PING", [&, kept = Note()](const Result<std::string>& answer) {
    socket->Request("STATUS", Note());
    program_.Say(program_.Take(), "unheard\n");
    socket.reset();
    kept(answer);
  });
  program_.Say(program_.Take(), "PONG\n");
  UntilAnswers(1);
  run_.TurnWhileReady();
  EXPECT_EQ(answers_, Texts{"PONG\n"});
}

TEST_F(UnixControlSocketsTest, MayBeDestroyedFromAMessage) {
  std::unique_ptr<ControlSocket> socket;
  auto connected = sockets_.Connect(path_, [&, kept = std::string(" kept")](const std::string& text) {
    socket.reset();
    messages_.push_back(text + kept);
  });
  ASSERT_TRUE(connected.Succeeded());
  socket = std::move(connected.Value());
  socket->Request("ATTACH", Note());
  const auto attach = program_.Take();
  program_.Say(attach, "<3>CTRL-EVENT-TERMINATING ");
  program_.Say(attach, "<3>AP-DISABLED ");
  run_.Until("a message", [this] { return !messages_.empty(); });
  run_.TurnWhileReady();
  EXPECT_EQ(messages_, Texts{"<3>CTRL-EVENT-TERMINATING  kept"});
}

}  // namespace

}  // namespace TALO::Wifid
