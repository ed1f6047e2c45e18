#include "daemon/radio/linux/air_listener.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/control/supplicant_files.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

using namespace std::chrono_literals;

constexpr auto kGoodFor = 10s;
constexpr auto kDeadline = 25s;
/// When the interface listens for somebody else already.
constexpr auto kBetweenTries = 500ms;

int SecondsBetween(Timers::Duration from, Timers::Duration to) {
  return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(to - from).count());
}

/// On a line of its own.
bool IsNumber(const std::string& text) {
  return !text.empty() && text != "\n" && text.find_first_not_of("0123456789\n") == std::string::npos;
}

}  // namespace

AirListener::AirListener(RadioFrequency radio, Program& supplicant, Timers& timers)
    : radio_(radio), supplicant_(supplicant), timers_(timers) {}

std::optional<std::vector<Wifi::ScanResult>> AirListener::Remember() const {
  if (!heardAt_ || timers_.Now() - *heardAt_ > kGoodFor) {
    return std::nullopt;
  }
  std::vector<Wifi::ScanResult> results = heard_;
  for (Wifi::ScanResult& result : results) {
    result.age += SecondsBetween(*heardAt_, timers_.Now());
  }
  return results;
}

void AirListener::Listen(const std::string& interface, const std::vector<int>& frequencies,
                         std::set<Wifi::Util::MACAddress> own, RadioDriver::ScanDone done) {
  interface_ = interface;
  own_ = std::move(own);
  done_ = std::move(done);
  startedAt_ = timers_.Now();
  channels_.clear();
  command_ = "SCAN freq=";
  for (const int frequency : frequencies) {
    command_ += (channels_.empty() ? "" : ",") + std::to_string(frequency);
    channels_.insert(ChannelAt(frequency));
  }
  // So that it answers with a number, which the end is told with.
  command_ += " use_id=1";
  heard_.clear();
  heardAt_.reset();
  early_.clear();
  phase_ = Phase::Asking;
  deadline_ = timers_.After(kDeadline, [this] {
    End(Refusal{ErrorCode::RadioFailed,
                "the radio " + NameOrNumber(radio_) + " did not come to the end of listening"});
  });
  Ask();
}

void AirListener::Ask() {
  supplicant_.Ask(ToInterface(interface_, command_), [this](const Result<std::string>& answer) {
    if (!done_) {
      return;
    }
    if (!answer.Succeeded()) {
      End(answer.Why());
    } else if (answer.Value().starts_with("FAIL-BUSY")) {
      again_ = timers_.After(kBetweenTries, [this] { Ask(); });
    } else if (!IsNumber(answer.Value())) {
      End(Refusal{ErrorCode::RadioFailed, "the radio " + NameOrNumber(radio_) + " cannot listen"});
    } else {
      Begin(answer.Value());
    }
  });
}

// Messages and answers come by different ways, so the end may be here already.
void AirListener::Begin(const std::string& number) {
  number_ = number.substr(0, number.find('\n'));
  phase_ = Phase::Listening;
  for (const ControlMessage& message : std::exchange(early_, {})) {
    Take(message);
  }
}

void AirListener::Take(const ControlMessage& message) {
  if (!done_ || message.interface != interface_) {
    return;
  }
  const auto number = message.fields.find("id");
  const bool isNumbered = number != message.fields.end();
  if (phase_ == Phase::Asking) {
    // Results without a number are of somebody else's listening, which was over when this began.
    if (isNumbered || message.name == "CTRL-EVENT-SCAN-FAILED") {
      early_.push_back(message);
    }
  } else if (phase_ == Phase::Collecting) {
    return;
  } else if (message.name == "CTRL-EVENT-SCAN-RESULTS") {
    if (!isNumbered || number->second == number_) {
      phase_ = Phase::Collecting;
      Collect(-1, Elements::With);
    }
  } else if (message.name == "CTRL-EVENT-SCAN-FAILED") {
    const auto code = message.fields.find("ret");
    End(Refusal{ErrorCode::RadioFailed, "the radio " + NameOrNumber(radio_) + " cannot listen" +
                                            (code != message.fields.end() ? " (" + code->second + ")" : "")});
  }
}

// What it was asked fails by itself.
void AirListener::LoseSupplicant() {
  if (done_ && phase_ == Phase::Listening) {
    End(Refusal{ErrorCode::RadioFailed,
                "the radio " + NameOrNumber(radio_) + " cannot listen: " + supplicant_.GetName() + " ended"});
  }
}

// A long answer ends early, so it is asked on from its last entry. Where that gives nothing, there is nothing
// more, or the next entry is too long for any answer.
void AirListener::Collect(int after, Elements elements) {
  const std::string command = ListHeardAfter(after, elements);
  supplicant_.Ask(ToInterface(interface_, command), [this, after, elements](Result<std::string> answer) {
    if (!done_) {
      return;
    }
    if (!answer.Succeeded()) {
      End(answer.Why());
      return;
    }
    const bool isWhole = elements == Elements::With;
    const std::string reply = isWhole ? std::move(answer.Value()) : FirstHeard(answer.Value());
    Keep(ReadHeard(reply, radio_));
    if (const int last = LastHeardId(reply); last >= 0) {
      Collect(last, Elements::With);
    } else if (isWhole) {
      Collect(after, Elements::Without);
    } else {
      std::ranges::stable_sort(heard_, std::ranges::greater(), &Wifi::ScanResult::signal);
      heardAt_ = timers_.Now();
      End(heard_);
    }
  });
}

void AirListener::Keep(std::vector<Wifi::ScanResult> results) {
  const int oldest = SecondsBetween(startedAt_, timers_.Now()) + 1;
  for (Wifi::ScanResult& result : results) {
    if (result.age <= oldest && channels_.contains(result.channel) && !own_.contains(result.bssid)) {
      result.age = 0;
      heard_.push_back(std::move(result));
    }
  }
}

void AirListener::End(Result<std::vector<Wifi::ScanResult>> result) {
  timers_.Cancel(deadline_);
  timers_.Cancel(again_);
  std::exchange(done_, nullptr)(std::move(result));
}

}  // namespace TALO::Wifid
