#include "daemon/system/child_processes.h"

#include "daemon/system/line_cutter.h"
#include "daemon/system/running_program.h"

#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

std::string Describe(int status) {
  return WIFSIGNALED(status) ? "killed by signal " + std::to_string(WTERMSIG(status))
                             : "exit status " + std::to_string(WEXITSTATUS(status));
}

class ChildProcess final : public Child {
 public:
  ChildProcess(const Loop& loop, EndingPrograms& endings, Children::Program program, Children::LineSink line,
               Children::EndSink ended)
      : endings_(endings),
        program_(std::move(program)),
        running_(std::make_unique<RunningProgram>(program_)),
        line_(std::move(line)),
        ended_(std::move(ended)) {
    output_.emplace(loop, running_->Output(), EPOLLIN, [this] {
      Lines lines;
      ReadPiece(lines);
      PassOn(lines);
    });
    end_.emplace(loop, running_->End(), EPOLLIN, [this] { End(); });
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() override {
    output_.reset();
    end_.reset();
    endings_.Take(program_, std::move(running_));
  }

 private:
  using Lines = std::vector<std::string>;

  /// At most one piece, so that a program that prints without end leaves room for others. False where there
  /// is none.
  bool ReadPiece(Lines& lines) {
    std::array<char, 16384> piece{};
    const ssize_t got = read(running_->Output(), piece.data(), piece.size());
    if (got > 0) {
      Append(lines, cutter_.Take(std::string_view(piece.data(), static_cast<std::size_t>(got))));
    } else if (got == 0 || errno != EAGAIN) {
      output_.reset();
    }
    return got > 0;
  }

  static void Append(Lines& lines, const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); }

  /// False when the child was destroyed meanwhile, its sinks with it.
  bool PassOn(const Lines& lines) {
    const std::weak_ptr<const bool> alive = alive_;
    const Children::LineSink sink = line_;
    for (const std::string& line : lines) {
      sink(line);
      if (alive.expired()) {
        return false;
      }
    }
    return true;
  }

  /// Nobody writes any more, so what is in the pipe is the rest; but a program in a session of its own may
  /// still hold it and go on for ever.
  void End() {
    constexpr int kMaximumPieces = 64;
    end_.reset();
    running_->Kill();
    const std::optional<int> status = running_->Reap();
    Lines lines;
    for (int pieces = 0; pieces < kMaximumPieces && ReadPiece(lines); ++pieces) {
    }
    output_.reset();
    Append(lines, cutter_.TakeRest());
    if (PassOn(lines)) {
      const Children::EndSink ended = std::move(ended_);
      ended(status ? Describe(*status) : "nobody knows how yet");
    }
  }

  EndingPrograms& endings_;
  Children::Program program_;
  std::unique_ptr<RunningProgram> running_;
  Children::LineSink line_;
  Children::EndSink ended_;
  LineCutter cutter_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
  std::optional<EventWatch> output_;
  std::optional<EventWatch> end_;
};

}  // namespace

Result<std::unique_ptr<Child>> ChildProcesses::Start(const Program& program, LineSink line, EndSink ended) {
  if (endings_.Has(program)) {
    return Refusal{ErrorCode::RadioFailed, "the program " + program.path +
                                               " cannot be started: the one before was killed and is not "
                                               "gone yet"};
  }
  try {
    return std::unique_ptr<Child>(
        std::make_unique<ChildProcess>(loop_, endings_, program, std::move(line), std::move(ended)));
  } catch (const std::system_error& failure) {
    return Refusal{ErrorCode::RadioFailed, failure.what()};
  }
}

}  // namespace TALO::Wifid
