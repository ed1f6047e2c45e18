#include "daemon/system/netlink_socket.h"

#include "daemon/system/link_messages.h"
#include "support/descriptors.h"

#include <sys/socket.h>

#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/socket.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <system_error>
#include <thread>

/// Against this machine's kernel, whose links everybody may ask for.
namespace TALO::Wifid {

namespace {

/// Another process's end, in the place of the kernel.
class Peer {
 public:
  Peer() : socket_(EndToEnd::Opened(socket(AF_NETLINK, SOCK_RAW, NETLINK_USERSOCK), "no socket")) {
    sockaddr_nl own{AF_NETLINK, 0, 0, 0};
    socklen_t size = sizeof own;
    if (bind(socket_.Get(), reinterpret_cast<const sockaddr*>(&own), size) != 0 ||
        getsockname(socket_.Get(), reinterpret_cast<sockaddr*>(&own), &size) != 0) {
      EndToEnd::ThrowErrno("no address of a socket");
    }
    port_ = own.nl_pid;
  }

  /// What is asked there comes here, and what is said here goes there.
  void Answer(NetlinkSocket& socket) {
    nl_socket_set_peer_port(socket.Get(), port_);
    asking_.nl_pid = nl_socket_get_local_port(socket.Get());
  }

  /// The number of the next question.
  std::uint32_t Hear() {
    nlmsghdr header{};
    if (recv(socket_.Get(), &header, sizeof header, 0) != sizeof header) {
      EndToEnd::ThrowErrno("no question");
    }
    return header.nlmsg_seq;
  }

  /// False when nobody is there any more.
  bool Say(std::uint32_t number, std::uint16_t type, std::uint16_t flags, const nlmsgerr& body = {}) {
    struct {
      nlmsghdr header;
      nlmsgerr body;
    } const message{{NLMSG_LENGTH(sizeof body), type, flags, number, port_}, body};
    return sendto(socket_.Get(), &message, sizeof message, 0, reinterpret_cast<const sockaddr*>(&asking_),
                  sizeof asking_) == sizeof message;
  }
  void SayWhole(std::uint32_t number) {
    EXPECT_TRUE(Say(number, kAnswer, 0));
    EXPECT_TRUE(Say(number, NLMSG_ERROR, 0));
  }

  static constexpr std::uint16_t kAnswer = NLMSG_MIN_TYPE;

 private:
  EndToEnd::Descriptor socket_;
  std::uint32_t port_ = 0;
  sockaddr_nl asking_{AF_NETLINK, 0, 0, 0};
};

class NetlinkSocketTest : public testing::Test {
 protected:
  /// Why a question is not answered; success where it is.
  static std::error_code FailureOf(NetlinkSocket& socket, const NetlinkRequest& request) {
    try {
      socket.Ask(request);
    } catch (const std::system_error& failure) {
      return failure.code();
    }
    return {};
  }

  static NetlinkRequest Question() { return {NLMSG_MIN_TYPE, 0, rtgenmsg{}}; }

  static NetlinkRequest AskForLink(int index) {
    ifinfomsg header{};
    header.ifi_index = index;
    return {RTM_GETLINK, 0, header};
  }

  NetlinkSocket route_{NETLINK_ROUTE};
};

TEST_F(NetlinkSocketTest, GivesTheWholeOfAList) {
  const auto links = ReadLinks(route_.Ask(ListLinks()));
  const auto loopback = std::ranges::find(links, "lo", &Link::name);
  ASSERT_NE(loopback, links.end());
  EXPECT_EQ(loopback->index, if_nametoindex("lo"));
}

TEST_F(NetlinkSocketTest, GivesASingleAnswer) {
  const auto links = ReadLinks(route_.Ask(AskForLink(static_cast<int>(if_nametoindex("lo")))));
  ASSERT_EQ(links.size(), 1U);
  EXPECT_EQ(links[0].name, "lo");
}

TEST_F(NetlinkSocketTest, TellsTheKernelsReasonAndGoesOn) {
  EXPECT_EQ(FailureOf(route_, AskForLink(1 << 30)), std::errc::no_such_device);
  EXPECT_FALSE(ReadLinks(route_.Ask(ListLinks())).empty());
}

TEST_F(NetlinkSocketTest, TellsTheKernelsOwnWords) {
  try {
    route_.Ask(NetlinkRequest(RTM_GETLINK, 0, rtgenmsg{}));
    FAIL() << "the kernel took half a header";
  } catch (const std::system_error& failure) {
    EXPECT_STREQ(failure.what(), "Invalid header for get link: Invalid argument");
  }
}

TEST_F(NetlinkSocketTest, GivesUpWhereNoAnswerComes) {
  // This part of the kernel passes over what is too short.
  NetlinkSocket silent(NETLINK_FIB_LOOKUP, std::chrono::milliseconds(20));
  EXPECT_EQ(FailureOf(silent, Question()), std::errc::timed_out);
}

TEST_F(NetlinkSocketTest, GivesUpWhereAnswersComeWithoutEnd) {
  for (const std::uint32_t step : {0U, 1U}) {
    Peer peer;
    NetlinkSocket socket(NETLINK_USERSOCK, std::chrono::milliseconds(20));
    peer.Answer(socket);
    std::thread talking([&peer, step] {
      std::uint32_t number = peer.Hear();
      while (peer.Say(number, Peer::kAnswer, NLM_F_MULTI)) {
        number += step;
      }
    });
    EXPECT_EQ(FailureOf(socket, Question()), std::errc::timed_out);
    talking.join();
  }
}

TEST_F(NetlinkSocketTest, TakesNothingThatItReadsTooLate) {
  Peer peer;
  NetlinkSocket socket(NETLINK_USERSOCK, std::chrono::milliseconds(0));
  peer.Answer(socket);
  EXPECT_EQ(FailureOf(socket, Question()), std::errc::timed_out);
  const std::uint32_t first = peer.Hear();
  peer.Answer(socket);
  peer.SayWhole(first + 1);
  EXPECT_EQ(FailureOf(socket, Question()), std::errc::timed_out);
}

TEST_F(NetlinkSocketTest, PassesOverWhatComesLateForAQuestionBefore) {
  Peer peer;
  NetlinkSocket socket(NETLINK_USERSOCK, std::chrono::milliseconds(20));
  peer.Answer(socket);
  EXPECT_EQ(FailureOf(socket, Question()), std::errc::timed_out);
  const std::uint32_t first = peer.Hear();
  peer.Answer(socket);
  peer.SayWhole(first);
  // Questions count up.
  peer.SayWhole(first + 1);
  const Messages messages = socket.Ask(Question());
  ASSERT_EQ(messages.size(), 1U);
  nlmsghdr header{};
  std::memcpy(&header, messages[0].data(), sizeof header);
  EXPECT_EQ(header.nlmsg_seq, first + 1);
}

TEST_F(NetlinkSocketTest, SaysWhenItCannotConnect) {
  constexpr int kNoProtocol = 31;
  NetlinkSocket socket(kNoProtocol);
  EXPECT_EQ(FailureOf(socket, ListLinks()), std::errc::io_error);
}

}  // namespace

}  // namespace TALO::Wifid
