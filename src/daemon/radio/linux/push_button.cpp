#include "daemon/radio/linux/push_button.h"

#include "daemon/radio/linux/control/hostapd_commands.h"

#include <utility>

namespace TALO::Wifid {

namespace {

using namespace std::chrono_literals;
using Outcome = WPSFinished::Outcome;

/// hostapd tells of the end after 120 seconds; should it not, the session ends all the same.
constexpr auto kDeadline = 125s;

}  // namespace

PushButton::PushButton(Program& hostapd, Timers& timers, Tell tell)
    : hostapd_(hostapd), timers_(timers), tell_(std::move(tell)) {}

void PushButton::Open(const std::string& interface, RadioDriver::Done done) {
  if (interface_) {
    done(Refusal{ErrorCode::Busy, "a WPS session runs on " + *interface_});
    return;
  }
  interface_ = interface;
  hostapd_.Ask(StartPushButton(interface), [this, interface,
                                            done = std::move(done)](const Result<std::string>& answer) {
    if (answer.Succeeded() && answer.Value().starts_with("OK")) {
      deadline_ = timers_.After(kDeadline, [this] { End(Outcome::TimedOut); });
      done({});
      return;
    }
    interface_.reset();
    done(answer.Succeeded()
             ? Refusal{ErrorCode::RadioFailed, "the BSS " + interface + " does not take a WPS session"}
             : answer.Why());
  });
}

void PushButton::Cancel(const std::string& interface, RadioDriver::Done done) {
  if (interface_ != interface || !deadline_) {
    done(Refusal{ErrorCode::NotAllowed, "no WPS session runs on " + interface});
    return;
  }
  End(Outcome::Cancelled);
  hostapd_.Ask(CancelPushButton(interface),
               [interface, done = std::move(done)](const Result<std::string>& answer) {
                 done(answer.Succeeded() ? Result<void>() : Result<void>(answer.Why()));
               });
}

void PushButton::Take(const ControlMessage& message) {
  if (message.interface != interface_ || !deadline_) {
    return;
  }
  if (message.name == "WPS-SUCCESS") {
    End(Outcome::Enrolled);
  } else if (message.name == "WPS-TIMEOUT") {
    End(Outcome::TimedOut);
  } else if (message.name == "WPS-OVERLAP-DETECTED") {
    // hostapd would go on waiting for one to give up.
    hostapd_.Ask(CancelPushButton(message.interface), [](const Result<std::string>&) {});
    End(Outcome::Overlap);
  }
}

void PushButton::BSSWentDown(const std::string& interface) {
  // One that is only about to be opened is refused by hostapd then.
  if (interface_ == interface && deadline_) {
    End(Outcome::Cancelled);
  }
}

void PushButton::End(Outcome outcome) {
  timers_.Cancel(*std::exchange(deadline_, std::nullopt));
  tell_(WPSFinished{*std::exchange(interface_, std::nullopt), outcome});
}

}  // namespace TALO::Wifid
