#include "daemon/system/ending_programs.h"

#include <poll.h>
#include <sys/epoll.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kTimeToEnd = std::chrono::seconds(2);

void WaitForEnd(const RunningProgram& running, Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  pollfd end{running.End(), POLLIN, 0};
  poll(&end, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
}

}  // namespace

EndingPrograms::~EndingPrograms() {
  const auto deadline = Clock::now() + kTimeToEnd;
  for (const Ending& ending : endings_) {
    WaitForEnd(*ending.running, deadline);
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
