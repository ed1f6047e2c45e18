#include "bench/load.h"

#include "bench/figures.h"
#include "support/test_connection.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace TALO::Bench {

using Wifi::Bus::CheckMessage;

Caller::Caller(sd_event* loop, Target target, Permission permission)
    : bus_(EndToEnd::OpenBus(std::getenv("DBUS_SYSTEM_BUS_ADDRESS"))),
      target_(std::move(target)),
      permission_(std::move(permission)) {
  // Waits until the bus has taken it, which belongs to no call.
  const char* name = nullptr;
  CheckMessage(sd_bus_get_unique_name(bus_.get(), &name));
  CheckMessage(sd_bus_attach_event(bus_.get(), loop, 0));
}

void Caller::Begin() {
  if (permission_()) {
    Call();
  }
}

void Caller::Call() {
  sd_bus_message* call = nullptr;
  CheckMessage(sd_bus_message_new_method_call(bus_.get(), &call, target_.destination.c_str(),
                                              target_.path.c_str(), target_.interface.c_str(),
                                              target_.member.c_str()));
  const Wifi::Bus::Message owned(call);
  if (target_.fill) {
    target_.fill(call, called_);
  }
  ++called_;
  start_ = std::chrono::steady_clock::now();
  CheckMessage(sd_bus_call_async(bus_.get(), nullptr, call, &OnAnswer, this, 0));
}

int Caller::OnAnswer(sd_bus_message* answer, void* caller, sd_bus_error*) {
  auto& self = *static_cast<Caller*>(caller);
  const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - self.start_;
  if (const sd_bus_error* error = sd_bus_message_get_error(answer)) {
    std::fprintf(stderr, "%s is answered with %s: %s\n", self.target_.member.c_str(), error->name,
                 error->message);
    return sd_event_exit(sd_bus_get_event(self.bus_.get()), 1);
  }
  self.latencies_.push_back(took.count());
  if (self.permission_()) {
    self.Call();
  }
  return 0;
}

Load MeasureLoad(const Target& target, std::size_t callers, std::size_t calls, const Target* disturbance) {
  sd_event* made = nullptr;
  CheckMessage(sd_event_new(&made));
  const std::unique_ptr<sd_event, EndLoop> loop(made);

  std::size_t begun = 0;
  std::size_t working = callers;
  const auto permission = [&] {
    if (begun < calls) {
      ++begun;
      return true;
    }
    --working;
    return false;
  };
  std::vector<std::unique_ptr<Caller>> all;
  for (std::size_t i = 0; i < callers; ++i) {
    all.push_back(std::make_unique<Caller>(loop.get(), target, permission));
  }
  std::unique_ptr<Caller> other;
  if (disturbance != nullptr) {
    other = std::make_unique<Caller>(loop.get(), *disturbance, [&] { return working > 0; });
    other->Begin();
  }
  const auto start = std::chrono::steady_clock::now();
  for (const auto& caller : all) {
    caller->Begin();
  }
  while (working > 0) {
    CheckMessage(sd_event_run(loop.get(), UINT64_MAX));
    if (sd_event_get_state(loop.get()) == SD_EVENT_FINISHED) {
      throw std::runtime_error("a call is refused");
    }
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;

  std::vector<double> latencies;
  for (const auto& caller : all) {
    latencies.insert(latencies.end(), caller->Latencies().begin(), caller->Latencies().end());
  }
  return {static_cast<double>(latencies.size()) / took.count(), Median(latencies), Quantile(latencies, 0.99)};
}

}  // namespace TALO::Bench
