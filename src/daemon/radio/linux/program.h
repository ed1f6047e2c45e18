#pragma once

#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/doors.h"
#include "daemon/radio/own_timers.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// Keeps hostapd or wpa_supplicant running and speaks to it: starts it, waits until it answers, listens to
/// what it tells, starts it again when it has ended or hangs, each time after a longer while up to half a
/// minute.
class Program {
 public:
  struct Setting {
    std::string name;           ///< as in "hostapd"
    Children::Program program;  ///< which makes its global control socket
    std::string socket;         ///< there
  };
  /// None is called from inside a call of this class.
  struct Sinks {
    std::function<void()> ready;  ///< it answers, and has nothing yet
    std::function<void()> gone;   ///< it is not there any more, and what it had is lost
    std::function<void(const ControlMessage&)> message;
    std::function<void()> lookAgain;  ///< from time to time: it may have told what was not heard
    std::function<std::string(const std::string&)> hideSecrets;  ///< in what it prints
  };

  Program(Setting setting, const LinuxDoors& doors, Sinks sinks);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Start();

  const std::string& GetName() const { return setting_.name; }
  bool IsReady() const { return state_ == State::Ready; }

  /// Called back once it is ready, or with RadioFailed and the reason when it is not after ten seconds; from
  /// inside the call where it is ready.
  void WhenReady(std::function<void(Result<void>)> done);

  /// Fails with RadioFailed where it is not ready, ends, or does not answer, after which it is started again.
  void Ask(const std::string& command, ControlSocket::Answer answer);

  /// A place in what it prints.
  std::uint64_t Mark() const { return printed_; }
  /// What it has printed since, on one line; the last of it where it is much.
  std::string PrintedSince(std::uint64_t mark) const;

 private:
  enum class State { Ended, Starting, Ready };
  using Done = std::function<void(Result<void>)>;

  void TakeLine(const std::string& line);
  void Greet();
  void Connect();
  void Attach();
  void Enter();
  void Check();
  void Lose(const std::string& why);
  Timers::Duration Patience() const;
  void Note(DriverNote::Weight weight, const std::string& what) const;

  Setting setting_;
  LinuxDoors doors_;
  Sinks sinks_;
  State state_ = State::Ended;
  std::string why_ = "it was not started";  ///< while it is not ready
  int failures_ = 0;                        ///< in a row
  Timers::Duration giveUpAt_{};             ///< while it starts
  std::uint64_t printed_ = 0;
  std::deque<std::string> lines_;  ///< the last ones
  std::map<std::uint64_t, ControlSocket::Answer> unanswered_;
  std::map<std::uint64_t, Done> waiting_;
  std::uint64_t lastNumber_ = 0;
  std::unique_ptr<Child> child_;
  std::unique_ptr<ControlSocket> socket_;
  OwnTimers timers_;
  std::optional<OwnTimers> run_;  ///< what waits as long as this run lasts
};

}  // namespace TALO::Wifid
