#include "main/arguments.h"
#include "main/dispatch.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace {

/// Fills descriptors 0 to 2 where the caller closed them, so that no socket opened later takes their numbers
/// and receives what is printed. They are opened for reading only: printing to one still fails, and is
/// noticed.
void occupyStandardDescriptors() {
  int descriptor = 0;
  do {
    descriptor = open("/dev/null", O_RDONLY);  // NOLINT(cppcoreguidelines-pro-type-vararg)
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor > STDERR_FILENO) {
    close(descriptor);
  }
}

}  // namespace

int main(int argc, char** argv) {
  // First of all: nothing may take its time while a passphrase can be seen.
  const TALO::Tool::TakenArguments arguments(argc, argv);
  occupyStandardDescriptors();
  // A reader that went away shows as a failed write, and so as status 1, not as death by signal.
  std::signal(SIGPIPE, SIG_IGN);
  return TALO::Tool::dispatch(arguments.Count(), arguments.Words());
}
