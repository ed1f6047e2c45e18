#pragma once

#include "support/descriptors.h"

#include <sys/ptrace.h>
#include <sys/types.h>
#include <sys/wait.h>

#include <cerrno>
#include <stdexcept>
#include <string>

namespace TALO::Wifid {

/// Another process that traces one. As long as it does, nobody else can reap that one, whatever killed it: so
/// looks a program from outside that hangs in the kernel at its end.
class Tracer {
 public:
  /// Throws where it may not be traced.
  explicit Tracer(pid_t traced) {
    EndToEnd::Pipe begun = EndToEnd::OpenPipe();
    EndToEnd::Pipe over = EndToEnd::OpenPipe();
    id_ = fork();
    if (id_ < 0) {
      EndToEnd::ThrowErrno("no process can be made");
    }
    if (id_ == 0) {
      over.writer = EndToEnd::Descriptor();
      Trace(traced, begun.writer, over.reader);
    }
    begun.writer = EndToEnd::Descriptor();
    over_ = std::move(over.writer);
    int error = -1;
    if (read(begun.reader.Get(), &error, sizeof error) != sizeof error || error != 0) {
      waitpid(id_, nullptr, 0);
      throw std::runtime_error("the process " + std::to_string(traced) + " cannot be traced");
    }
  }
  Tracer(const Tracer&) = delete;
  Tracer& operator=(const Tracer&) = delete;
  ~Tracer() {
    over_ = EndToEnd::Descriptor();
    waitpid(id_, nullptr, 0);
  }

 private:
  [[noreturn]] static void Trace(pid_t traced, const EndToEnd::Descriptor& begun,
                                 const EndToEnd::Descriptor& over) {
    const int error = ptrace(PTRACE_SEIZE, traced, nullptr, nullptr) == 0 ? 0 : errno;
    [[maybe_unused]] const ssize_t written = write(begun.Get(), &error, sizeof error);
    char nothing = 0;
    [[maybe_unused]] const ssize_t got = read(over.Get(), &nothing, 1);
    _exit(0);
  }

  pid_t id_ = -1;
  EndToEnd::Descriptor over_;
};

}  // namespace TALO::Wifid
