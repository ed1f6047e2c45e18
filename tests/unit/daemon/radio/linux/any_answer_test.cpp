// Whatever hostapd and wpa_supplicant say, reading it ends and throws nothing.

#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/control/replies.h"
#include "unit/daemon/radio/linux/recorded.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

const std::vector<std::string> kMessages = {
    "IFNAME=wlan1 <3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"caf\\xc3\\\" \\\\\" auth_failures=1 "
    "duration=10",
    "IFNAME=wlan1 <3>CTRL-EVENT-CONNECTED - Connection to 02:11:00:00:00:04 completed [id=0 id_str=]",
    "IFNAME=wlan0_4 <3>WPS-ENROLLEE-SEEN 02:00:00:00:01:00 572cf82f 0-00000000-0 0x280 4 1 [ ]",
};

std::vector<std::string> Answers() {
  std::vector<std::string> answers = kMessages;
  for (const char* name : {"heard-rest.txt", "heard-160MHz.txt", "status-odd-ssid.txt", "signal-5GHz.txt",
                           "hostapd-status.txt"}) {
    answers.push_back(Recorded(name));
    EXPECT_FALSE(answers.back().empty()) << name;
  }
  return answers;
}

/// Reads it as everything that it could be, and holds the readers to what is true of any answer.
void ReadAsAnything(const std::string& answer) {
  const std::vector<Wifi::ScanResult> heard = ReadHeard(answer, RadioFrequency::Band5GHz);
  EXPECT_LE(heard.size(), static_cast<std::size_t>(std::ranges::count(answer, '\n')));
  for (const Wifi::ScanResult& each : heard) {
    EXPECT_GT(each.channel, 0);
    EXPECT_GE(each.channelWidth, 20);
  }
  EXPECT_GE(LastHeardId(answer), -1);
  EXPECT_LE(ReadSSID(answer).size(), answer.size());
  ReadUpstream(answer, answer);
  if (const auto message = ReadMessage(answer)) {
    EXPECT_FALSE(message->name.empty());
    message->Address();
  }
}

TEST(AnyAnswer, IsReadHoweverMuchOfItIsMissing) {
  for (const std::string& answer : Answers()) {
    for (std::size_t length = 0; length < answer.size(); ++length) {
      ReadAsAnything(answer.substr(0, length));
    }
  }
}

TEST(AnyAnswer, IsReadWhateverBytesAreInIt) {
  std::mt19937 random(1);  // NOLINT: the same bytes in every run
  std::uniform_int_distribution<int> byte(0, 255);
  for (const std::string& answer : Answers()) {
    std::uniform_int_distribution<std::size_t> place(0, answer.size() - 1);
    for (int round = 0; round < 500; ++round) {
      std::string damaged = answer;
      for (int change = 0; change < 5; ++change) {
        damaged[place(random)] = static_cast<char>(byte(random));
      }
      ReadAsAnything(damaged);
    }
  }
  for (int round = 0; round < 2000; ++round) {
    std::string noise(static_cast<std::size_t>(byte(random)), '\0');
    std::ranges::generate(noise, [&] { return static_cast<char>(byte(random)); });
    ReadAsAnything(noise);
    ReadAsAnything("<3>" + noise);
    ReadAsAnything("id=1\nbssid=02:11:00:00:00:01\nfreq=5180\nflags=[ESS][" + noise + "\n####\n");
  }
}

TEST(AnyAnswer, MayHoldTheLargestNumbers) {
  ReadAsAnything("id=2147483647\nbssid=02:11:00:00:00:01\nfreq=2147483647\nlevel=-2147483648\n####\n");
  ReadAsAnything("id=-2147483648\nbssid=02:11:00:00:00:01\nfreq=-2147483648\nage=99999999999\n####\n");
}

}  // namespace

}  // namespace TALO::Wifid
