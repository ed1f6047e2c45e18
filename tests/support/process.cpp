#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <grp.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace TALO::EndToEnd {

namespace {

/// Everything else stays out, so that a run does not depend on who started it.
constexpr std::array<const char*, 6> kInherited = {"PATH",          "LD_LIBRARY_PATH", "ASAN_OPTIONS",
                                                   "UBSAN_OPTIONS", "LSAN_OPTIONS",    "TSAN_OPTIONS"};

std::vector<std::string> Assignments(Environment environment) {
  for (const char* name : kInherited) {
    if (const char* value = std::getenv(name)) {
      environment.emplace(name, value);
    }
  }
  std::vector<std::string> assignments;
  for (const auto& [name, value] : environment) {
    assignments.push_back(name + "=" + value);
  }
  return assignments;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

Descriptor MemoryFile(const char* name) { return Opened(memfd_create(name, MFD_CLOEXEC), name); }

// From the beginning, and without moving the position that the child writes at.
std::string ReadAll(int descriptor) {
  std::string text;
  std::array<char, 4096> chunk{};
  for (;;) {
    const ssize_t got = pread(descriptor, chunk.data(), chunk.size(), static_cast<off_t>(text.size()));
    if (got < 0) {
      ThrowErrno("captured output cannot be read");
    }
    if (got == 0) {
      return text;
    }
    text.append(chunk.data(), static_cast<std::size_t>(got));
  }
}

struct Streams {
  int input;
  int output;  ///< -1: closed
  int errors;
  bool closeOthers;
};

/// Changing the user forgets the signal at the parent's end, so this comes before that is asked for.
void BecomeNobody() {
  constexpr uid_t kNobody = 65534;
  if (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0) {
    _exit(127);
  }
}

/// The child's side, between fork and exec: async-signal-safe calls only.
[[noreturn]] void Become(char* const* words, char* const* environment, const Streams& streams, pid_t parent,
                         bool asNobody) {
  if (asNobody) {
    BecomeNobody();
  }
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) {
    _exit(127);
  }
  std::signal(SIGPIPE, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);

  dup2(streams.input, STDIN_FILENO);
  dup2(streams.errors, STDERR_FILENO);
  if (streams.output >= 0) {
    dup2(streams.output, STDOUT_FILENO);
  } else {
    close(STDOUT_FILENO);
  }
  if (streams.closeOthers) {
    close(STDIN_FILENO);
    close(STDERR_FILENO);
  }
  execvpe(words[0], words, environment);
  _exit(127);
}

}  // namespace

Process::Process(const ProcessSetup& setup)
    : name_(setup.words.at(0)), output_(MemoryFile("output")), errors_(MemoryFile("errors")) {
  std::vector<std::string> words = setup.words;
  std::vector<std::string> assignments = Assignments(setup.environment);
  const std::vector<char*> wordPointers = Pointers(words);
  const std::vector<char*> assignmentPointers = Pointers(assignments);
  const Descriptor nothing = Opened(open("/dev/null", O_RDONLY | O_CLOEXEC), "/dev/null cannot be opened");

  Streams streams{nothing.Get(), output_.Get(), errors_.Get(), setup.closeOtherStreams};
  if (setup.output == ProcessSetup::Output::Given) {
    streams.output = setup.givenOutput;
  } else if (setup.output == ProcessSetup::Output::Closed) {
    streams.output = -1;
  }

  const pid_t parent = getpid();
  id_ = fork();
  if (id_ < 0) {
    ThrowErrno("no process can be made for " + name_);
  }
  if (id_ == 0) {
    Become(wordPointers.data(), assignmentPointers.data(), streams, parent, setup.asNobody);
  }
  WatchEnd();
}

Process::~Process() {
  if (!reaped_) {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
}

// Older releases of valgrind do not know of descriptors of processes. There a thread waits in their place,
// which leaves the end to be read by Reap().
void Process::WatchEnd() {
  end_ = Descriptor(static_cast<int>(syscall(SYS_pidfd_open, id_, 0)));
  if (end_.Get() >= 0) {
    return;
  }
  end_ = Opened(eventfd(0, EFD_CLOEXEC), "a process cannot be watched");
  watcher_ = std::jthread([id = id_, ended = end_.Get()] {
    siginfo_t how;
    waitid(P_PID, static_cast<id_t>(id), &how, WEXITED | WNOWAIT);
    eventfd_write(ended, 1);
  });
}

bool Process::WaitForEnd(const Deadline* deadline) const {
  for (;;) {
    pollfd end{end_.Get(), POLLIN, 0};
    const int ready = poll(&end, 1, deadline != nullptr ? deadline->ForPoll() : 0);
    if (ready >= 0) {
      return ready > 0;
    }
    if (errno != EINTR) {
      ThrowErrno("a process cannot be waited for");
    }
  }
}

bool Process::HasEnded() const { return reaped_ || WaitForEnd(nullptr); }

void Process::Reap() {
  int status = 0;
  if (waitpid(id_, &status, 0) != id_) {
    ThrowErrno("the end of a process cannot be read");
  }
  reaped_ = true;
  status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int Process::Wait() {
  if (!reaped_) {
    const Deadline deadline;
    if (!WaitForEnd(&deadline)) {
      throw std::runtime_error(name_ + " does not end");
    }
    Reap();
  }
  return status_;
}

// Not reaped yet, so the number is still this process's.
void Process::SendSignal(int number) const {
  if (reaped_ || kill(id_, number) != 0) {
    throw std::runtime_error(name_ + " cannot be sent a signal");
  }
}

std::string Process::Output() const { return ReadAll(output_.Get()); }

std::string Process::Errors() const { return ReadAll(errors_.Get()); }

}  // namespace TALO::EndToEnd
