#include "support/machine/fake_program.h"

#include <utility>

namespace TALO::Wifid {

/// What the parent hears of a run, as long as it holds the child.
struct FakeProgram::Process {
  FakeProgram& program;
  Children::LineSink line;
  Children::EndSink ended;
  bool over = false;
};

Result<std::unique_ptr<Child>> FakeProgram::Start(const Children::Program& program, Children::LineSink line,
                                                  Children::EndSink ended) {
  class Handle final : public Child {
   public:
    explicit Handle(std::shared_ptr<Process> process) : process_(std::move(process)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() override {
      if (!process_->over) {
        process_->program.End();
      }
    }

   private:
    std::shared_ptr<Process> process_;
  };
  if (!startFailure.empty()) {
    return Refusal{ErrorCode::RadioFailed, "cannot start " + program.path + ": " + startFailure};
  }
  ++starts_;
  path_ = program.arguments.at(1);
  run_.emplace(timers_);
  auto process = std::make_shared<Process>(Process{*this, std::move(line), std::move(ended)});
  process_ = process;
  run_->After(startsAfter, [this] { sockets_.Listen(path_, *this); });
  return std::unique_ptr<Child>(std::make_unique<Handle>(std::move(process)));
}

void FakeProgram::End() {
  if (const auto process = process_.lock()) {
    process->over = true;
  }
  run_.reset();
  sockets_.Close(path_);
  Forget();
}

void FakeProgram::Die(const std::string& how) {
  End();
  timers_.After(FakeSockets::kLatency, [process = process_, how] {
    if (const auto alive = process.lock()) {
      alive->ended(how);
    }
  });
}

void FakeProgram::Print(const std::string& line) {
  timers_.After(FakeSockets::kLatency, [process = process_, line] {
    if (const auto alive = process.lock()) {
      alive->line(line);
    }
  });
}

std::optional<std::string> FakeProgram::Answer(const std::string& request) {
  if (hangs) {
    return std::nullopt;
  }
  if (request == "PING") {
    return "PONG\n";
  }
  if (request != "ATTACH") {
    requests.push_back(request);
  }
  if (request == diesOf) {
    diesOf.clear();
    Die("killed by signal 11");
    return std::nullopt;
  }
  if (auto odd = oddAnswers.extract(request)) {
    return odd.mapped();
  }
  return request == "ATTACH" ? "OK\n" : Obey(request);
}

Result<std::unique_ptr<Child>> FakeChildren::Start(const Program& program, LineSink line, EndSink ended) {
  const auto found = installed.find(program.path);
  if (found == installed.end()) {
    return Refusal{ErrorCode::RadioFailed, "cannot start " + program.path + ": No such file or directory"};
  }
  return found->second->Start(program, std::move(line), std::move(ended));
}

}  // namespace TALO::Wifid
