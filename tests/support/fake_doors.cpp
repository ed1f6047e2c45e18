#include "support/fake_doors.h"

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

void FakeStore::Save(const State& state, Saved saved) {
  const auto tell = [saved = std::move(saved), result = Save(state)] { saved(result); };
  if (isHolding_) {
    held_ = tell;
  } else {
    tell();
  }
}

void FakeStore::Release() {
  isHolding_ = false;
  if (const auto tell = std::exchange(held_, nullptr)) {
    tell();
  }
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
