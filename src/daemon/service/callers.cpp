#include "daemon/service/callers.h"

#include "bus/errors.h"
#include "daemon/service/message_size.h"
#include "daemon/service/unsent_messages.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

// A caller that has gone is no failure of ours, here as below.
void Answer(sd_bus_message* call, const char* error, const std::string& sentence) {
  sd_bus_reply_method_errorf(call, error, "%s", sentence.c_str());
}

void Refuse(sd_bus_message* call, ErrorCode code, const std::string& sentence) {
  Answer(call, Bus::ErrorNameOf(code), sentence);
}

std::string TextOf(const char* field) { return field != nullptr ? field : ""; }

std::string NameOf(sd_bus_message* call) {
  return TextOf(sd_bus_message_get_interface(call)) + "." + TextOf(sd_bus_message_get_member(call));
}

}  // namespace

Callers::Callers(Access access, Identify identify, const Log& log)
    : access_(access), identify_(std::move(identify)), log_(log) {}

void Callers::Attach(sd_bus* bus) {
  bus_ = bus;
  sd_bus_slot* slot = nullptr;
  Bus::CheckMessage(sd_bus_add_filter(bus, &slot, OnMessage, this));
  filter_.reset(slot);
  // Those that leave only: a connection's own name has no other owner after it. Not waited for: a bus that
  // says nothing must not hold the daemon up; one that refuses this ends the connection.
  Bus::CheckMessage(sd_bus_add_match_async(bus, &slot,
                                           "type='signal',sender='org.freedesktop.DBus',"
                                           "path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
                                           "member='NameOwnerChanged',arg2=''",
                                           OnNameLost, nullptr, this));
  match_.reset(slot);
}

int Callers::OnMessage(sd_bus_message* message, void* self, sd_bus_error*) {
  if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) {
    return 0;
  }
  try {
    return static_cast<Callers*>(self)->Receive(message) == Verdict::Pass ? 0 : 1;
  } catch (const std::exception& failure) {
    Answer(message, SD_BUS_ERROR_FAILED, std::string("the wifi daemon failed: ") + failure.what());
    return 1;
  }
}

int Callers::OnNameLost(sd_bus_message* signal, void* self, sd_bus_error*) {
  const char* name = nullptr;
  if (sd_bus_message_read_basic(signal, SD_BUS_TYPE_STRING, static_cast<void*>(&name)) > 0) {
    static_cast<Callers*>(self)->Forget(name);
  }
  return 0;
}

Callers::Verdict Callers::Receive(sd_bus_message* call) {
  // Whatever a call holds leaves the memory with it, refused or not.
  sd_bus_message_sensitive(call);
  const std::string name = TextOf(sd_bus_message_get_sender(call));
  if (name.empty()) {
    Answer(call, SD_BUS_ERROR_ACCESS_DENIED, "nobody vouches for the caller of " + NameOf(call));
    return Verdict::Done;
  }
  Caller& caller = Find(name);
  const bool hasWaited = !caller.waiting.empty() && caller.waiting.front().get() == call;
  if (hasWaited) {
    caller.waiting.pop_front();
    --waiting_;
  }
  if (BusTakesNothing()) {
    return Verdict::Done;
  }
  const bool mayPass = caller.identity && (hasWaited || caller.waiting.empty());
  return mayPass ? Judge(caller, call) : Wait(name, caller, call);
}

// A bus that takes no answers holds too many for callers that do not read theirs. To answer more would only
// fill the memory, also with refusals.
bool Callers::BusTakesNothing() {
  const bool takesNothing = HasTooManyUnsent(bus_);
  if (takesNothing && !passesOver_) {
    log_.Write(Severity::Error, "the bus does not take answers, calls are passed over until it does");
  }
  passesOver_ = takesNothing;
  return takesNothing;
}

Callers::Caller& Callers::Find(const std::string& name) {
  if (!callers_.contains(name)) {
    MakeRoom();
  }
  Caller& caller = callers_[name];
  caller.lastCall = ++lastCall_;
  return caller;
}

// Whom it takes is asked for again at the next call, no more. There is always one: fewer calls may wait than
// callers are remembered.
void Callers::MakeRoom() {
  if (callers_.size() < kMaximumCallers) {
    return;
  }
  auto oldest = callers_.end();
  for (auto caller = callers_.begin(); caller != callers_.end(); ++caller) {
    if (caller->second.waiting.empty() &&
        (oldest == callers_.end() || caller->second.lastCall < oldest->second.lastCall)) {
      oldest = caller;
    }
  }
  if (oldest != callers_.end()) {
    callers_.erase(oldest);
  }
}

Callers::Verdict Callers::Wait(const std::string& name, Caller& caller, sd_bus_message* call) {
  if (caller.waiting.size() >= kMaximumCallsOfCaller || waiting_ >= kMaximumCalls) {
    const bool isOwn = caller.waiting.size() >= kMaximumCallsOfCaller;
    Refuse(call, ErrorCode::LimitReached,
           (isOwn ? "this caller has " : "the wifi daemon has ") +
               std::to_string(isOwn ? kMaximumCallsOfCaller : kMaximumCalls) +
               " calls that wait for the bus to say who calls, no more are possible");
    return Verdict::Done;
  }
  if (caller.identity) {
    // Came between those that wait and their second turn, and so takes one behind them.
    Bus::CheckMessage(sd_bus_enqueue_for_read(bus_, call));
  }
  const bool isFirst = caller.waiting.empty();
  caller.waiting.emplace_back(sd_bus_message_ref(call));
  ++waiting_;
  if (!isFirst) {
    return Verdict::Done;
  }
  try {
    identify_(name, [this, name](const std::optional<Identity>& identity) { SetIdentity(name, identity); });
  } catch (...) {
    // Nobody was asked, so the next call is the first again.
    caller.waiting.pop_back();
    --waiting_;
    throw;
  }
  return Verdict::Done;
}

void Callers::SetIdentity(const std::string& name, const std::optional<Identity>& identity) {
  const auto found = callers_.find(name);
  if (found == callers_.end()) {
    return;
  }
  Caller& caller = found->second;
  caller.identity = identity;
  if (!identity) {
    for (const Bus::Message& call : caller.waiting) {
      Answer(call.get(), SD_BUS_ERROR_ACCESS_DENIED, "the bus does not say who calls " + NameOf(call.get()));
    }
    Forget(name);
    return;
  }
  auto& waiting = caller.waiting;
  std::size_t taken = 0;
  while (taken < waiting.size() && sd_bus_enqueue_for_read(bus_, waiting[taken].get()) >= 0) {
    ++taken;
  }
  for (; waiting.size() > taken; waiting.pop_back(), --waiting_) {
    Answer(waiting.back().get(), SD_BUS_ERROR_LIMITS_EXCEEDED,
           "too many calls are under way for " + NameOf(waiting.back().get()));
  }
}

Callers::Verdict Callers::Judge(Caller& caller, sd_bus_message* call) {
  if (!access_.IsAdministrator(*caller.identity)) {
    const std::string sentence =
        "user " + std::to_string(caller.identity->user) + " may not call " + NameOf(call);
    // Once a caller, so that nobody can fill the log.
    if (!std::exchange(caller.wasDenied, true)) {
      log_.Write(Severity::Warning, sentence);
    }
    Answer(call, SD_BUS_ERROR_ACCESS_DENIED, sentence);
    return Verdict::Done;
  }
  if (!IsOpen({TextOf(sd_bus_message_get_interface(call)), TextOf(sd_bus_message_get_member(call))})) {
    // Called unknown, since that is what it mostly is: a client of a later version.
    Answer(call, SD_BUS_ERROR_UNKNOWN_METHOD, "nobody may call " + NameOf(call));
    return Verdict::Done;
  }
  if (const auto excess = FindExcess(call)) {
    Refuse(call, ErrorCode::LimitReached, NameOf(call) + " was given " + *excess);
    return Verdict::Done;
  }
  return Verdict::Pass;
}

Result<std::shared_ptr<const Place>> Callers::Admit(sd_bus_message* call) {
  const std::string name = TextOf(sd_bus_message_get_sender(call));
  return limits_.Enter(name, callers_.at(name).identity.value().user);
}

void Callers::Forget(const std::string& name) {
  limits_.Leave(name);
  const auto caller = callers_.find(name);
  if (caller != callers_.end()) {
    waiting_ -= caller->second.waiting.size();
    callers_.erase(caller);
  }
}

}  // namespace TALO::Wifid
