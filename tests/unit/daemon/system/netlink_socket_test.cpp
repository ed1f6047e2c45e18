#include "daemon/system/netlink_socket.h"

#include "daemon/system/link_messages.h"

#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <algorithm>
#include <chrono>
#include <system_error>

/// Against this machine's kernel, whose links everybody may ask for.
namespace TALO::Wifid {

namespace {

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
  EXPECT_EQ(FailureOf(silent, NetlinkRequest(NLMSG_MIN_TYPE, 0, rtgenmsg{})), std::errc::timed_out);
}

TEST_F(NetlinkSocketTest, SaysWhenItCannotConnect) {
  constexpr int kNoProtocol = 31;
  NetlinkSocket socket(kNoProtocol);
  EXPECT_EQ(FailureOf(socket, ListLinks()), std::errc::io_error);
}

}  // namespace

}  // namespace TALO::Wifid
