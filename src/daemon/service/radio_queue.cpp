#include "daemon/service/radio_queue.h"

#include <utility>

namespace TALO::Wifid {

void RadioQueue::Enter(Radios radios, Start start) {
  const Ticket ticket = ++lastTicket_;
  Entry entry{std::move(radios), std::move(start), 0};
  for (const RadioFrequency radio : entry.radios) {
    std::deque<Ticket>& line = lines_[radio];
    entry.waitingIn += line.empty() ? 0 : 1;
    line.push_back(ticket);
  }
  if (entry.waitingIn == 0) {
    ready_.insert(ticket);
  }
  entries_.emplace(ticket, std::move(entry));
  StartWhatCan();
}

void RadioQueue::Leave(Ticket ticket) {
  const auto entry = entries_.find(ticket);
  if (entry == entries_.end()) {
    return;
  }
  for (const RadioFrequency radio : entry->second.radios) {
    std::deque<Ticket>& line = lines_[radio];
    line.pop_front();
    if (!line.empty() && --entries_.at(line.front()).waitingIn == 0) {
      ready_.insert(line.front());
    }
  }
  entries_.erase(entry);
  StartWhatCan();
  TellWhenEmpty();
}

void RadioQueue::WhenEmpty(std::function<void()> action) {
  whenEmpty_ = std::move(action);
  TellWhenEmpty();
}

void RadioQueue::TellWhenEmpty() {
  if (entries_.empty() && whenEmpty_) {
    std::exchange(whenEmpty_, nullptr)();
  }
}

// One at a time, the earliest first: a start may enter, or leave at once. Such calls come back here and are
// left to the loop that runs already, so that a long queue takes no deep stack.
void RadioQueue::StartWhatCan() {
  if (starting_) {
    return;
  }
  starting_ = true;
  while (!ready_.empty()) {
    const Ticket ticket = *ready_.begin();
    ready_.erase(ready_.begin());
    const Start start = std::move(entries_.at(ticket).start);
    try {
      start(ticket);
    } catch (...) {
      starting_ = false;
      Leave(ticket);
      throw;
    }
  }
  starting_ = false;
}

}  // namespace TALO::Wifid
