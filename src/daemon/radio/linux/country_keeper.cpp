#include "daemon/radio/linux/country_keeper.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/questions.h"

#include <utility>

namespace TALO::Wifid {

namespace {

constexpr auto kDeadline = std::chrono::seconds(5);
/// What the kernel makes of the country that it is asked for and another that an access point has told a
/// station of: what both allow.
constexpr const char* kIntersection = "98";

}  // namespace

CountryKeeper::CountryKeeper(Kernel& kernel, Timers& timers) : kernel_(kernel), timers_(timers) {
  kernel_.SetCountrySink([this] { Look(); });
}

CountryKeeper::~CountryKeeper() { kernel_.SetCountrySink({}); }

void CountryKeeper::Require(Wifi::CountryCode country, Done done) {
  const std::string code = NameOrNumber(country);
  const auto now = AskKernel(kernel_, &Kernel::GetCountry);
  if (!now.Succeeded()) {
    done(now.Why());
    return;
  }
  if (now.Value() == code || (now.Value() == kIntersection && served_ == code)) {
    done({});
    return;
  }
  if (auto asked = kernel_.RequestCountry(code); !asked.Succeeded()) {
    done(asked.Why());
    return;
  }
  const auto waiting = waiting_.insert(waiting_.end(), {code, std::move(done), 0});
  waiting->deadline = timers_.After(kDeadline, [this, waiting] {
    const Waiting late = std::move(*waiting);
    waiting_.erase(waiting);
    const Result<void> judged = Judge(late.code);
    if (judged.Succeeded()) {
      served_ = late.code;
    }
    late.done(judged);
  });
}

bool CountryKeeper::IsServed(const std::string& code, const std::string& now) {
  return now == code || now == kIntersection;
}

Result<void> CountryKeeper::Judge(const std::string& code) const {
  const auto now = AskKernel(kernel_, &Kernel::GetCountry);
  if (!now.Succeeded()) {
    return now.Why();
  }
  if (IsServed(code, now.Value())) {
    return {};
  }
  return Refusal{ErrorCode::RadioFailed, "the kernel does not take the country " + code +
                                             ": it has the rules of " +
                                             (now.Value() == "00" ? "the world" : Quoted(now.Value()))};
}

void CountryKeeper::Look() {
  // What it does not say now, it is asked again at the deadline.
  const std::string now = HearFromKernel(kernel_, &Kernel::GetCountry);
  std::list<Waiting> served;
  for (auto waiting = waiting_.begin(); waiting != waiting_.end();) {
    const auto next = std::next(waiting);
    if (IsServed(waiting->code, now)) {
      timers_.Cancel(waiting->deadline);
      served.splice(served.end(), waiting_, waiting);
    }
    waiting = next;
  }
  for (const Waiting& each : served) {
    served_ = each.code;
    each.done({});
  }
}

}  // namespace TALO::Wifid
