#include "daemon/system/background_writer.h"

#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

Descriptor MadeCounter() {
  Descriptor counter(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (!counter.IsOpen()) {
    throw std::system_error(errno, std::generic_category(), "the end of a save cannot be watched");
  }
  return counter;
}

}  // namespace

BackgroundWriter::BackgroundWriter(const Loop& loop, StateStore& store, Timers& timers,
                                   std::function<void()> late)
    : store_(store),
      timers_(timers),
      late_(std::move(late)),
      done_(MadeCounter()),
      watch_(loop, done_.Get(), EPOLLIN, [this] { Finish(); }) {}

BackgroundWriter::~BackgroundWriter() {
  timers_.Cancel(patience_);
  if (worker_.joinable()) {
    worker_.join();
  }
}

void BackgroundWriter::Save(const State& state, Saved saved) {
  if (worker_.joinable()) {
    throw std::logic_error("one state after the other");
  }
  try {
    worker_ = std::thread([this, state] { Work(state); });
  } catch (const std::exception& failure) {
    saved(Refusal{ErrorCode::StorageFailed,
                  std::string("the state cannot be saved: no thread can be made: ") + failure.what()});
    return;
  }
  saved_ = std::move(saved);
  patience_ = timers_.After(kPatience, late_);
}

bool BackgroundWriter::IsDoneWithin(std::chrono::milliseconds time) const {
  pollfd done{done_.Get(), POLLIN, 0};
  return !worker_.joinable() || poll(&done, 1, static_cast<int>(time.count())) > 0;
}

void BackgroundWriter::Work(const State& state) {
  try {
    result_ = store_.Save(state);
  } catch (const std::exception& failure) {
    result_ = Refusal{ErrorCode::StorageFailed, std::string("the state cannot be saved: ") + failure.what()};
  }
  constexpr std::uint64_t kOne = 1;
  // A counter that is zero takes one more.
  [[maybe_unused]] const auto written = write(done_.Get(), &kOne, sizeof kOne);
}

void BackgroundWriter::Finish() {
  std::uint64_t count = 0;
  if (read(done_.Get(), &count, sizeof count) != sizeof count) {
    return;
  }
  worker_.join();
  timers_.Cancel(patience_);
  const Result<void> result = std::move(result_);
  const Saved saved = std::exchange(saved_, nullptr);
  saved(result);
}

}  // namespace TALO::Wifid
