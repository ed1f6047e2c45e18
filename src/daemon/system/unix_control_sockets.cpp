#include "daemon/system/unix_control_sockets.h"

#include "daemon/radio/own_timers.h"
#include "daemon/system/datagram_channel.h"

#include <chrono>
#include <deque>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr std::chrono::seconds kPatience{10};

/// Whether this goes to the channel of the messages: they come to where the request for them came from.
bool IsAboutMessages(const std::string& request) { return request == "ATTACH" || request == "DETACH"; }

/// Messages come between the answers on that channel: "<3>AP-ENABLED", or "IFNAME=wlan0 <3>AP-ENABLED".
bool IsMessage(const std::string& text) { return text.starts_with('<') || text.starts_with("IFNAME="); }

bool IsTooLong(const std::runtime_error& failure) {
  const auto* error = dynamic_cast<const std::system_error*>(&failure);
  return error != nullptr && error->code() == std::errc::message_size;
}

/// One request is under way at a time, since an answer does not say what it answers.
class UnixControlSocket final : public ControlSocket {
 public:
  UnixControlSocket(const Loop& loop, Timers& timers, std::string path, ControlSockets::MessageSink sink)
      : loop_(loop), path_(std::move(path)), sink_(std::move(sink)), timers_(timers) {
    Open(requests_);
    Open(messages_);
  }

  void Request(const std::string& request, Answer answer) override {
    waiting_.push_back({request, std::move(answer)});
    if (waiting_.size() == 1) {
      Begin();
    }
  }

 private:
  using Channel = std::optional<DatagramChannel>;

  struct Waiting {
    std::string text;
    Answer answer;
  };

  void Open(Channel& channel) {
    channel.reset();
    channel.emplace(loop_, path_, [this, &channel] { OnReady(channel); });
  }

  Channel& ChannelOfFirst() { return IsAboutMessages(waiting_.front().text) ? messages_ : requests_; }

  void Begin() {
    sent_ = false;
    deadline_ = timers_.After(kPatience, [this] { GiveUp(); });
    Send();
  }

  void Send() {
    Channel& channel = ChannelOfFirst();
    try {
      if (!channel) {
        throw std::runtime_error("the program at " + path_ + " is gone");
      }
      sent_ = channel->Send(waiting_.front().text);
    } catch (const std::runtime_error& failure) {
      // Later: this may be inside the call of whoever asks.
      timers_.Cancel(deadline_);
      deadline_ =
          timers_.After(Timers::Duration(0), [this, why = std::string(failure.what())] { Fail(why); });
      if (!IsTooLong(failure)) {
        channel.reset();
      }
    }
  }

  /// What still comes for the request is not for the next one: it finds nobody.
  void GiveUp() {
    try {
      Open(ChannelOfFirst());
    } catch (const std::system_error&) {
      // Left closed, which is what the next request finds.
    }
    Fail("the program at " + path_ + " has not answered within " + std::to_string(kPatience.count()) +
         " seconds");
  }

  void Fail(const std::string& why) { Finish(Refusal{ErrorCode::RadioFailed, why}); }

  /// Answers the first. This object may be gone afterwards.
  void Finish(Result<std::string> result) {
    timers_.Cancel(deadline_);
    const Answer answer = std::move(waiting_.front().answer);
    waiting_.pop_front();
    if (!waiting_.empty()) {
      Begin();
    }
    answer(std::move(result));
  }

  void OnReady(Channel& channel) {
    const bool concernsFirst = !waiting_.empty() && &ChannelOfFirst() == &channel;
    if (concernsFirst && !sent_) {
      Send();
    }
    if (const auto text = channel ? channel->Receive() : std::nullopt) {
      const bool isMessage = &channel == &messages_ && IsMessage(*text);
      if (concernsFirst && sent_ && !isMessage) {
        Finish(*text);
      } else if (isMessage) {
        const ControlSockets::MessageSink sink = sink_;  // this object may be gone before it returns
        sink(*text);
      }
    }
  }

  const Loop& loop_;
  std::string path_;
  ControlSockets::MessageSink sink_;
  OwnTimers timers_;
  std::deque<Waiting> waiting_;  ///< the first is under way
  bool sent_ = false;            ///< the first
  Timers::Id deadline_ = 0;
  Channel requests_;  ///< either is closed once the program is found gone
  Channel messages_;
};

}  // namespace

Result<std::unique_ptr<ControlSocket>> UnixControlSockets::Connect(const std::string& path,
                                                                   MessageSink sink) {
  try {
    return std::unique_ptr<ControlSocket>(
        std::make_unique<UnixControlSocket>(loop_, timers_, path, std::move(sink)));
  } catch (const std::system_error& failure) {
    return Refusal{ErrorCode::RadioFailed, failure.what()};
  }
}

}  // namespace TALO::Wifid
