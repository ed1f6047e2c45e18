#include "daemon/radio/linux/program.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

using namespace std::chrono_literals;
using Weight = DriverNote::Weight;

constexpr auto kTimeToStart = 10s;
constexpr auto kBetweenGreetings = 20ms;
constexpr auto kFirstPatience = 200ms;
constexpr auto kLongestPatience = 30s;
/// A program that ran so long without a failure is trusted again.
constexpr auto kTimeToTrust = 60s;
/// So often is it asked whether it still answers and tells.
constexpr auto kBetweenChecks = 30s;
constexpr const char* kNotListenedTo = "it does not let itself be listened to";
constexpr std::size_t kKeptLines = 50;
constexpr std::size_t kMostToTell = 400;

}  // namespace

Program::Program(Setting setting, const LinuxDoors& doors, Sinks sinks)
    : setting_(std::move(setting)), doors_(doors), sinks_(std::move(sinks)), timers_(doors.timers) {}

void Program::Note(Weight weight, const std::string& what) const {
  doors_.note({weight, setting_.name + what});
}

void Program::Start() {
  state_ = State::Starting;
  if (failures_ == 0) {
    why_ = "it does not answer";
  }
  run_.emplace(doors_.timers);
  giveUpAt_ = timers_.Now() + kTimeToStart;
  auto child = doors_.children.Start(
      setting_.program, [this](const std::string& line) { TakeLine(line); },
      [this](const std::string& how) { Lose("it ended: " + how); });
  if (!child.Succeeded()) {
    Lose(child.Why().sentence);
    return;
  }
  child_ = std::move(child.Value());
  Connect();
}

void Program::TakeLine(const std::string& line) {
  const std::string told = sinks_.hideSecrets(line);
  ++printed_;
  lines_.push_back(told);
  if (lines_.size() > kKeptLines) {
    lines_.pop_front();
  }
  Note(Weight::Detail, ": " + told);
}

std::string Program::PrintedSince(std::uint64_t mark) const {
  const std::size_t lines = std::min<std::uint64_t>(printed_ - mark, lines_.size());
  std::string text;
  for (auto line = lines_.end() - static_cast<std::ptrdiff_t>(lines); line != lines_.end(); ++line) {
    text += (text.empty() ? "" : "; ") + *line;
  }
  return text.size() > kMostToTell ? "..." + text.substr(text.size() - kMostToTell) : text;
}

// It makes its socket some time after its start.
void Program::Connect() {
  auto socket = doors_.sockets.Connect(setting_.socket, [this](const std::string& datagram) {
    if (const auto message = ReadMessage(datagram); message && state_ == State::Ready) {
      sinks_.message(*message);
    }
  });
  if (socket.Succeeded()) {
    socket_ = std::move(socket.Value());
    Greet();
  } else if (timers_.Now() >= giveUpAt_) {
    Lose("it does not answer: " + socket.Why().sentence);
  } else {
    run_->After(kBetweenGreetings, [this] { Connect(); });
  }
}

void Program::Greet() {
  socket_->Request("PING", [this](const Result<std::string>& answer) {
    // What an end left behind may still be answered.
    if (state_ != State::Starting) {
      return;
    }
    if (answer.Succeeded() && answer.Value().starts_with("PONG")) {
      Attach();
    } else if (timers_.Now() >= giveUpAt_) {
      Lose("it does not answer: " + (answer.Succeeded() ? "not a PONG" : answer.Why().sentence));
    } else {
      run_->After(kBetweenGreetings, [this] { Connect(); });
    }
  });
}

void Program::Attach() {
  socket_->Request("ATTACH", [this](const Result<std::string>& answer) {
    if (state_ != State::Starting) {
      return;
    }
    if (answer.Succeeded() && answer.Value().starts_with("OK")) {
      Enter();
    } else {
      Lose(kNotListenedTo);
    }
  });
}

void Program::Enter() {
  state_ = State::Ready;
  Note(Weight::Information, " runs");
  run_->After(kTimeToTrust, [this] { failures_ = 0; });
  run_->After(kBetweenChecks, [this] { Check(); });
  sinks_.ready();
  for (auto& [number, done] : std::exchange(waiting_, {})) {
    done({});
  }
}

void Program::Check() {
  // Ask() finds out when it does not answer. It stops telling whoever was not quick enough some times,
  // without a word, and to ask for it twice does no harm.
  Ask("ATTACH", [this](const Result<std::string>& answer) {
    if (!answer.Succeeded()) {
      return;
    }
    if (!answer.Value().starts_with("OK")) {
      Lose(kNotListenedTo);
      return;
    }
    run_->After(kBetweenChecks, [this] { Check(); });
    sinks_.lookAgain();
  });
}

void Program::WhenReady(Done done) {
  if (IsReady()) {
    done({});
    return;
  }
  const std::uint64_t number = ++lastNumber_;
  waiting_[number] = std::move(done);
  timers_.After(kTimeToStart, [this, number] {
    if (auto waiting = waiting_.extract(number)) {
      waiting.mapped()(Refusal{ErrorCode::RadioFailed, setting_.name + " does not run: " + why_});
    }
  });
}

void Program::Ask(const std::string& command, ControlSocket::Answer answer) {
  const std::uint64_t number = ++lastNumber_;
  unanswered_[number] = std::move(answer);
  const auto give = [this, number](const Result<std::string>& reply) {
    if (auto asked = unanswered_.extract(number)) {
      asked.mapped()(reply);
    }
  };
  if (!IsReady()) {
    timers_.After(0ms, [this, give] {
      give(Refusal{ErrorCode::RadioFailed, setting_.name + " does not run: " + why_});
    });
    return;
  }
  socket_->Request(command, [this, give](const Result<std::string>& reply) {
    give(reply);
    // One that does not answer does nothing else either.
    if (!reply.Succeeded()) {
      Lose(reply.Why().sentence);
    }
  });
}

Timers::Duration Program::Patience() const {
  auto patience = std::chrono::milliseconds(kFirstPatience);
  for (int failure = 1; failure < failures_ && patience < kLongestPatience; ++failure) {
    patience *= 3;
  }
  return std::min<Timers::Duration>(patience, kLongestPatience);
}

void Program::Lose(const std::string& why) {
  if (state_ == State::Ended) {
    return;
  }
  const bool wasReady = std::exchange(state_, State::Ended) == State::Ready;
  why_ = why;
  ++failures_;
  run_.reset();
  Note(Weight::Failure, " is started again: " + why);
  timers_.After(Patience(), [this] { Start(); });
  // Whoever calls may be the socket or the child itself.
  std::shared_ptr<ControlSocket> socket = std::move(socket_);
  std::shared_ptr<Child> child = std::move(child_);
  timers_.After(0ms, [socket, child] {});
  if (wasReady) {
    sinks_.gone();
  }
  for (auto& [number, answer] : std::exchange(unanswered_, {})) {
    answer(Refusal{ErrorCode::RadioFailed, setting_.name + " does not run: " + why});
  }
}

}  // namespace TALO::Wifid
