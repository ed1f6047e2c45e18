#include "daemon/system/ending_programs.h"

#include "daemon/system/readable.h"

#include <sys/epoll.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr auto kTimeToEnd = std::chrono::seconds(2);

}  // namespace

EndingPrograms::~EndingPrograms() {
  const auto deadline = std::chrono::steady_clock::now() + kTimeToEnd;
  for (const Ending& ending : endings_) {
    WaitUntilReadable(ending.running->End(), deadline);
  }
  Reap();
}

void EndingPrograms::Take(const Children::Program& program, std::unique_ptr<RunningProgram> running) {
  running->Kill();
  if (!running->Reap()) {
    endings_.push_back({program, std::move(running)});
    Watch(endings_.back());
  }
}

bool EndingPrograms::Has(const Children::Program& program) {
  Reap();
  return std::ranges::find(endings_, program, &Ending::program) != endings_.end();
}

void EndingPrograms::Watch(Ending& ending) {
  try {
    ending.end = std::make_unique<EventWatch>(loop_, ending.running->End(), EPOLLIN, [this, &ending] {
      // Once: one that somebody else traces stays readable though it cannot be reaped.
      ending.end.reset();
      Reap();
    });
  } catch (const std::system_error&) {
    // It is reaped when the next one is to start.
  }
}

void EndingPrograms::Reap() {
  endings_.remove_if([](const Ending& ending) { return ending.running->Reap().has_value(); });
}

}  // namespace TALO::Wifid
