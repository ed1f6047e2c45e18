#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/radio/own_timers.h"
#include "support/machine/fake_sockets.h"

#include <memory>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// A program that is installed on the fake machine. Once started with "-g PATH" it listens there after a
/// while. It can be started again when it has ended.
class FakeProgram : public ControlServer {
 public:
  FakeProgram(Timers& timers, FakeSockets& sockets) : timers_(timers), sockets_(sockets) {}
  FakeProgram(const FakeProgram&) = delete;
  FakeProgram& operator=(const FakeProgram&) = delete;

  Result<std::unique_ptr<Child>> Start(const Children::Program& program, Children::LineSink line,
                                       Children::EndSink ended);

  /// Ends it, as in "killed by signal 9".
  void Die(const std::string& how);
  bool IsRunning() const { return run_.has_value(); }
  int CountStarts() const { return starts_; }

  std::optional<std::string> Answer(const std::string& request) final;

  void Print(const std::string& line);
  /// To all that have attached.
  void Tell(const std::string& message) { sockets_.Tell(path_, message); }
  /// Nobody hears anything until he attaches again.
  void DetachAll() { sockets_.DetachAll(path_); }

  Timers::Duration startsAfter{30};
  std::string startFailure;  ///< why it cannot be started, where that is so
  bool hangs = false;        ///< answers nothing
  /// Answered in the place of what it would, and once; the request is not carried out.
  std::map<std::string, std::string> oddAnswers;
  std::string diesOf;                 ///< the request that ends it, killed by signal 11
  std::vector<std::string> requests;  ///< but PING and ATTACH

 protected:
  virtual std::string Obey(const std::string& request) = 0;
  /// All that it had is lost.
  virtual void Forget() = 0;

  /// Not any more once it has ended.
  void After(Timers::Duration delay, std::function<void()> action) { run_->After(delay, std::move(action)); }
  Timers& GetTimers() { return timers_; }

 private:
  struct Process;
  void End();

  Timers& timers_;
  FakeSockets& sockets_;
  std::string path_;
  std::weak_ptr<Process> process_;
  std::optional<OwnTimers> run_;
  int starts_ = 0;
};

/// The programs that are installed on the fake machine, by their paths.
class FakeChildren final : public Children {
 public:
  Result<std::unique_ptr<Child>> Start(const Program& program, LineSink line, EndSink ended) override;

  std::map<std::string, FakeProgram*> installed;
};

}  // namespace TALO::Wifid
