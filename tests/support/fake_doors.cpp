#include "support/fake_doors.h"

#include <algorithm>

namespace TALO::Wifid {

std::string Brief(const State& state) {
  std::string text;
  for (const NetworkState& network : state.networks) {
    text += (text.empty() ? "" : " ") + std::to_string(network.id);
  }
  for (const Wifi::StationSetting& station : state.stations) {
    text += station.enable ? ", joins " + station.essid : "";
  }
  return text;
}

std::string FailureList::Take() {
  if (failures_.empty()) {
    return {};
  }
  std::string failure = std::move(failures_.front());
  failures_.pop_front();
  return failure;
}

Result<void> FakeStore::Save(const State& state) {
  journal_.push_back("save " + Brief(state));
  if (const std::string failure = failures_.Take(); !failure.empty()) {
    return Refusal{ErrorCode::StorageFailed, failure};
  }
  saved_ = state;
  return {};
}

Timers::Id ManualTimers::After(Duration delay, std::function<void()> action) {
  const Id id = ++lastId_;
  pending_.emplace(std::pair(now_ + std::max(delay, Duration::zero()), id), std::move(action));
  return id;
}

void ManualTimers::Cancel(Id id) {
  std::erase_if(pending_, [id](const auto& timer) { return timer.first.second == id; });
}

void ManualTimers::Advance(Duration duration) {
  const Duration end = now_ + duration;
  while (!pending_.empty() && pending_.begin()->first.first <= end) {
    const auto timer = pending_.extract(pending_.begin());
    now_ = timer.key().first;
    timer.mapped()();
  }
  now_ = end;
}

std::optional<Timers::Duration> ManualTimers::UntilNext() const {
  return pending_.empty() ? std::nullopt : std::optional(pending_.begin()->first.first - now_);
}

std::string FakeRandom::Draw(std::size_t count) {
  if (broken) {
    throw std::runtime_error("no randomness");
  }
  std::string bytes;
  while (bytes.size() < count) {
    bytes += static_cast<char>(next_++);
  }
  return bytes;
}

}  // namespace TALO::Wifid
