#include "daemon/system/linux_kernel.h"
#include "support/descriptors.h"
#include "support/files.h"
#include "support/loop_run.h"

#include <sys/ioctl.h>
#include <sys/socket.h>

#include <gtest/gtest.h>
#include <linux/genetlink.h>
#include <linux/nl80211.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

/// Against this machine's kernel, as root, with radios that nobody uses.
namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

class RealKernelTest : public testing::Test {
 protected:
  void SetUp() override {
    try {
      kernel_ = std::make_unique<LinuxKernel>(run_.Get());
    } catch (const std::system_error& failure) {
      GTEST_SKIP() << failure.what();
    }
    if (kernel_->GetWiphys().empty()) {
      GTEST_SKIP() << "this machine has no radios";
    }
    wiphy_ = kernel_->GetWiphys().front();
  }

  void TearDown() override {
    if (kernel_ && Find(kName)) {
      EXPECT_EQ(SentenceOf(kernel_->DeleteInterface(kName)), "");
    }
  }

  /// Empty after success.
  static std::string SentenceOf(const Result<void>& result) {
    return result.Succeeded() ? "" : result.Why().sentence;
  }

  std::optional<WirelessInterface> Find(const std::string& name) const {
    for (const WirelessInterface& interface : kernel_->GetInterfaces()) {
      if (interface.name == name) {
        return interface;
      }
    }
    return std::nullopt;
  }

  void Add(InterfaceType type, bool fourAddress = false) {
    ASSERT_EQ(
        SentenceOf(kernel_->AddInterface({wiphy_.index, kName, type, MACAddress(kAddress), fourAddress})),
        "");
  }

  static constexpr const char* kName = "talotest0";
  static constexpr const char* kAddress = "02:7a:10:00:00:01";

  LoopRun run_;
  std::unique_ptr<LinuxKernel> kernel_;
  Wiphy wiphy_;
};

/// A bridge of the test's own.
class TestBridge {
 public:
  explicit TestBridge(std::string name) : name_(std::move(name)) { Request(SIOCBRADDBR); }
  TestBridge(const TestBridge&) = delete;
  TestBridge& operator=(const TestBridge&) = delete;
  ~TestBridge() { Request(SIOCBRDELBR); }

 private:
  void Request(unsigned long request) {
    const EndToEnd::Descriptor any =
        EndToEnd::Opened(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0), "a socket");
    if (ioctl(any.Get(), request, name_.c_str()) != 0) {
      EndToEnd::ThrowErrno("the bridge " + name_);
    }
  }

  std::string name_;
};

TEST_F(RealKernelTest, TellsOfItsRadios) {
  int last = -1;
  for (const Wiphy& wiphy : kernel_->GetWiphys()) {
    EXPECT_GT(wiphy.index, last);
    last = wiphy.index;
    EXPECT_FALSE(wiphy.name.empty());
    ASSERT_TRUE(wiphy.band2_4GHz || wiphy.band5GHz) << wiphy.name;
    for (const auto& band : {wiphy.band2_4GHz, wiphy.band5GHz}) {
      if (band) {
        EXPECT_TRUE(std::ranges::is_sorted(band->channels, {}, &WiphyChannel::frequency));
        EXPECT_TRUE(std::ranges::any_of(band->channels, [](const WiphyChannel& channel) {
          return !channel.disabled && channel.maximumPower > 0;
        }));
      }
    }
  }
}

TEST_F(RealKernelTest, MakesAndDeletesAnInterface) {
  for (const InterfaceType type : {InterfaceType::Station, InterfaceType::AccessPoint}) {
    Add(type);
    const auto made = Find(kName);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->wiphy, wiphy_.index);
    EXPECT_EQ(made->type, type);
    EXPECT_EQ(made->address, MACAddress(kAddress));
    EXPECT_GT(made->index, 0);
    EXPECT_TRUE(kernel_->GetStations(kName).empty());
    EXPECT_EQ(SentenceOf(kernel_->DeleteInterface(kName)), "");
    EXPECT_FALSE(Find(kName));
  }
}

TEST_F(RealKernelTest, SaysWhatCannotBeDoneAndWhy) {
  const std::string gone = "the interface talotest0 cannot be ";
  EXPECT_EQ(SentenceOf(kernel_->DeleteInterface(kName)), gone + "deleted: No such device");
  EXPECT_EQ(SentenceOf(kernel_->SetUp(kName, true)), gone + "brought up: No such device");
  EXPECT_EQ(SentenceOf(kernel_->SetUp(kName, false)), gone + "brought down: No such device");
  EXPECT_EQ(SentenceOf(kernel_->SetTransmitPower(9999, 10)),
            "the power of the phy number 9999 cannot be set to 10 dBm: No such device");
  EXPECT_EQ(SentenceOf(kernel_->SetBridge(kName, "talobr0")),
            "the interface talotest0 cannot join the bridge talobr0: No such device");
  EXPECT_EQ(SentenceOf(kernel_->AddInterface({9999, kName, InterfaceType::Station, MACAddress(kAddress)})),
            gone + "made: No such device");
  EXPECT_EQ(
      SentenceOf(kernel_->AddInterface({wiphy_.index, kName, InterfaceType::Other, MACAddress(kAddress)})),
      gone + "made: Operation not supported");
  EXPECT_TRUE(kernel_->GetStations(kName).empty());
  EXPECT_TRUE(kernel_->GetSurvey(kName).empty());
  EXPECT_EQ(kernel_->GetBridgeOf(kName), "");
}

TEST_F(RealKernelTest, BringsAnInterfaceUpAndDown) {
  Add(InterfaceType::Station);
  const auto isUp = [] {
    const std::string flags = ReadFile("/sys/class/net/talotest0/flags");
    return (std::stoul(flags, nullptr, 16) & IFF_UP) != 0;
  };
  EXPECT_FALSE(isUp());
  EXPECT_EQ(SentenceOf(kernel_->SetUp(kName, true)), "");
  EXPECT_TRUE(isUp());
  EXPECT_EQ(SentenceOf(kernel_->SetTransmitPower(wiphy_.index, 10)), "");
  EXPECT_EQ(SentenceOf(kernel_->SetUp(kName, false)), "");
  EXPECT_FALSE(isUp());
}

/// What the kernel is asked beside what the daemon asks, to see what it made of that.
class Witness {
 public:
  /// An interface of a network without access points, which is on channel 1 by itself.
  void MakeAdHoc(int wiphy, const std::string& name) {
    NetlinkRequest make = Command(NL80211_CMD_NEW_INTERFACE);
    make.Number(NL80211_ATTR_WIPHY, static_cast<std::uint32_t>(wiphy))
        .Text(NL80211_ATTR_IFNAME, name)
        .Number<std::uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_ADHOC);
    socket_.Ask(make);
  }

  void JoinAdHoc(const std::string& name) {
    NetlinkRequest join = Command(NL80211_CMD_JOIN_IBSS);
    join.Number<std::uint32_t>(NL80211_ATTR_IFINDEX, if_nametoindex(name.c_str()))
        .Bytes(NL80211_ATTR_SSID, "talotest")
        .Number<std::uint32_t>(NL80211_ATTR_WIPHY_FREQ, 2412)
        .Flag(NL80211_ATTR_FREQ_FIXED)
        .Bytes(NL80211_ATTR_MAC, "\x02\x7a\x10\x0f\x0f\x0f");
    socket_.Ask(join);
  }

  /// In hundredths of dBm; nothing while it has no channel.
  std::optional<std::uint32_t> PowerOf(const std::string& name) {
    NetlinkRequest ask = Command(NL80211_CMD_GET_INTERFACE);
    ask.Number<std::uint32_t>(NL80211_ATTR_IFINDEX, if_nametoindex(name.c_str()));
    const Messages answer = socket_.Ask(ask);
    return Attributes(answer.at(0), GENL_HDRLEN).Number<std::uint32_t>(NL80211_ATTR_WIPHY_TX_POWER_LEVEL);
  }

 private:
  NetlinkRequest Command(int command) {
    return {family_, 0, genlmsghdr{static_cast<std::uint8_t>(command), 0, 0}};
  }

  NetlinkSocket socket_{NETLINK_GENERIC};
  /// Asked for first: questions of libnl's own and of NetlinkSocket's are not numbered alike.
  int family_ = genl_ctrl_resolve(socket_.Get(), NL80211_GENL_NAME);
};

TEST_F(RealKernelTest, LimitsThePowerOfARadio) {
  Witness witness;
  try {
    witness.MakeAdHoc(wiphy_.index, kName);
  } catch (const std::system_error&) {
    GTEST_SKIP() << wiphy_.name << " makes no interface that is on a channel by itself";
  }
  ASSERT_EQ(SentenceOf(kernel_->SetUp(kName, true)), "");
  witness.JoinAdHoc(kName);
  run_.Until("a channel", [&] {
    const auto interface = Find(kName);
    return interface && interface->frequency == 2412;
  });
  for (const int power : {7, 3, 10}) {
    EXPECT_EQ(SentenceOf(kernel_->SetTransmitPower(wiphy_.index, power)), "");
    EXPECT_EQ(witness.PowerOf(kName), static_cast<std::uint32_t>(power * 100));
  }
}

TEST_F(RealKernelTest, LetsAnInterfaceIn4AddressModeJoinAndLeaveABridge) {
  const TestBridge bridge("talobr0");
  EXPECT_TRUE(kernel_->GetBridges().contains("talobr0"));
  Add(InterfaceType::Station);
  EXPECT_EQ(SentenceOf(kernel_->SetBridge(kName, "talobr0")),
            "the interface talotest0 cannot join the bridge talobr0: Device does not allow enslaving to a "
            "bridge: Operation not supported");
  EXPECT_EQ(SentenceOf(kernel_->DeleteInterface(kName)), "");
  if (!wiphy_.fourAddress) {
    GTEST_SKIP() << wiphy_.name << " has no 4-address mode";
  }
  Add(InterfaceType::Station, true);
  EXPECT_EQ(kernel_->GetBridgeOf(kName), "");
  EXPECT_EQ(SentenceOf(kernel_->SetBridge(kName, "talobr0")), "");
  EXPECT_EQ(kernel_->GetBridgeOf(kName), "talobr0");
  EXPECT_EQ(SentenceOf(kernel_->SetBridge(kName, "")), "");
  EXPECT_EQ(kernel_->GetBridgeOf(kName), "");
  EXPECT_FALSE(kernel_->GetBridges().contains(kName));
}

TEST_F(RealKernelTest, TellsWhenAnotherCountryIsInForce) {
  int changes = 0;
  kernel_->SetCountrySink([&] { ++changes; });
  for (const std::string country : {"DE", "US", "DE"}) {
    if (kernel_->GetCountry() != country) {
      const int before = changes;
      EXPECT_EQ(SentenceOf(kernel_->RequestCountry(country)), "");
      run_.Until("a change of country", [&] { return changes > before && kernel_->GetCountry() == country; });
    }
  }
  // In Germany, and not in the world, access points may be on channel 36.
  for (const Wiphy& wiphy : kernel_->GetWiphys()) {
    if (wiphy.band5GHz) {
      const auto channel = std::ranges::find(wiphy.band5GHz->channels, 36, &WiphyChannel::number);
      ASSERT_NE(channel, wiphy.band5GHz->channels.end());
      EXPECT_FALSE(channel->disabled || channel->listenOnly) << wiphy.name;
    }
  }
  EXPECT_EQ(SentenceOf(kernel_->RequestCountry("Germany")),
            "the country Germany cannot be asked for: binary attribute size out of range: Numerical result "
            "out of range");
  EXPECT_EQ(kernel_->GetCountry(), "DE");
}

}  // namespace

}  // namespace TALO::Wifid
