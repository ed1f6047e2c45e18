#include "daemon/system/running_program.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <linux/close_range.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

constexpr int kFirstOther = STDERR_FILENO + 1;

[[noreturn]] void ThrowErrno(const std::string& what, int error = errno) {
  throw std::system_error(error, std::generic_category(), what);
}

/// The same under a number that is none of the standard streams', which are replaced in the child.
Descriptor Lifted(const Descriptor& given, const std::string& what) {
  Descriptor lifted(given.IsOpen() ? fcntl(given.Get(), F_DUPFD_CLOEXEC, kFirstOther) : -1);
  if (!lifted.IsOpen()) {
    ThrowErrno(what);
  }
  return lifted;
}

struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

Pipe MakePipe(const std::string& what) {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    ThrowErrno(what);
  }
  const Descriptor reader(ends[0]);
  const Descriptor writer(ends[1]);
  return {Lifted(reader, what), Lifted(writer, what)};
}

/// What the child needs once it is there: nothing is allocated then.
struct Start {
  std::vector<char*> words;
  int input;
  int output;
  int failures;
  pid_t parent;
};

/// All signals as they are at a program's start. Those that cannot be changed are so already.
void ForgetSignals() {
  for (int number = 1; number < NSIG; ++number) {
    std::signal(number, SIG_DFL);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// The child's side, between fork and exec: async-signal-safe calls only.
[[noreturn]] void Become(const Start& start) {
  static char path[] = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
  static char* environment[] = {path, nullptr};
  setsid();
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // A parent that ended before this sends no signal any more.
  if (getppid() == start.parent) {
    ForgetSignals();
    if (dup2(start.input, STDIN_FILENO) >= 0 && dup2(start.output, STDOUT_FILENO) >= 0 &&
        dup2(start.output, STDERR_FILENO) >= 0 && close_range(kFirstOther, ~0U, CLOSE_RANGE_CLOEXEC) == 0) {
      execve(start.words[0], start.words.data(), static_cast<char**>(environment));
    }
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(start.failures, &error, sizeof error);
  }
  _exit(127);
}

/// Why the program could not be run; 0 once it runs, which closes the other end.
int WaitForExec(const Descriptor& failures) {
  int error = 0;
  ssize_t got = -1;
  do {
    got = read(failures.Get(), &error, sizeof error);
  } while (got < 0 && errno == EINTR);
  return got == 0 ? 0 : error;
}

}  // namespace

RunningProgram::RunningProgram(const Children::Program& program) {
  const std::string failed = "the program " + program.path + " cannot be started";
  std::vector<std::string> texts{program.path};
  texts.insert(texts.end(), program.arguments.begin(), program.arguments.end());
  const Descriptor nothing = Lifted(Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)), failed);
  Pipe output = MakePipe(failed);
  Pipe failures = MakePipe(failed);
  output_ = std::move(output.reader);
  if (fcntl(output_.Get(), F_SETFL, O_NONBLOCK) != 0) {
    ThrowErrno(failed);
  }
  Start start{{}, nothing.Get(), output.writer.Get(), failures.writer.Get(), getpid()};
  for (std::string& text : texts) {
    start.words.push_back(text.data());
  }
  start.words.push_back(nullptr);

  id_ = fork();
  if (id_ < 0) {
    ThrowErrno(failed);
  }
  if (id_ == 0) {
    Become(start);
  }
  failures.writer = Descriptor();
  end_ = Descriptor(static_cast<int>(syscall(SYS_pidfd_open, id_, 0)));
  const int error = end_.IsOpen() ? WaitForExec(failures.reader) : errno;
  if (error != 0) {
    // It is about to end and holds nothing that could keep it.
    Kill();
    waitpid(id_, nullptr, 0);
    ThrowErrno(failed, error);
  }
}

void RunningProgram::Kill() {
  // Until it is reaped its number is nobody else's. Its session is not there yet where it never ran.
  if (!status_) {
    kill(-id_, SIGKILL);
    kill(id_, SIGKILL);
  }
}

std::optional<int> RunningProgram::Reap() {
  int status = 0;
  if (!status_ && waitpid(id_, &status, WNOHANG) == id_) {
    status_ = status;
  }
  return status_;
}

}  // namespace TALO::Wifid
