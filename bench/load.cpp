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

namespace {

using Loop = std::unique_ptr<sd_event, EndLoop>;
using Callers = std::vector<std::unique_ptr<Caller>>;

Loop MakeLoop() {
  sd_event* made = nullptr;
  CheckMessage(sd_event_new(&made));
  return Loop(made);
}

/// Seconds until `working` has fallen to nothing.
double RunOut(sd_event* loop, const std::size_t& working) {
  const auto start = std::chrono::steady_clock::now();
  while (working > 0) {
    CheckMessage(sd_event_run(loop, UINT64_MAX));
    if (sd_event_get_state(loop) == SD_EVENT_FINISHED) {
      throw std::runtime_error("a call is refused");
    }
  }
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

Load Sum(const Callers& callers, double seconds) {
  std::vector<double> latencies;
  for (const auto& caller : callers) {
    latencies.insert(latencies.end(), caller->Latencies().begin(), caller->Latencies().end());
  }
  return {static_cast<double>(latencies.size()) / seconds, Median(latencies), Quantile(latencies, 0.99),
          Quantile(latencies, 1), latencies.size()};
}

/// Lets a caller call so often, together with all that share `begun`.
Caller::Permission UpTo(std::size_t calls, std::size_t& begun, std::size_t& working) {
  return [calls, &begun, &working] {
    if (begun < calls) {
      ++begun;
      return true;
    }
    --working;
    return false;
  };
}

}  // namespace

Load MeasureLoad(const Target& target, std::size_t callers, std::size_t calls) {
  const Loop loop = MakeLoop();
  std::size_t begun = 0;
  std::size_t working = callers;
  Callers all;
  for (std::size_t i = 0; i < callers; ++i) {
    all.push_back(std::make_unique<Caller>(loop.get(), target, UpTo(calls, begun, working)));
  }
  for (const auto& caller : all) {
    caller->Begin();
  }
  const double seconds = RunOut(loop.get(), working);
  return Sum(all, seconds);
}

Load MeasureBeside(const Target& target, const Work& work) {
  const Loop loop = MakeLoop();
  std::size_t begun = 0;
  std::size_t disturbing = 1;
  std::size_t asking = 1;
  Caller other(loop.get(), work.call, UpTo(work.times, begun, disturbing));
  Callers one;
  one.push_back(std::make_unique<Caller>(loop.get(), target, [&] {
    asking = disturbing;
    return disturbing > 0;
  }));
  other.Begin();
  one.front()->Begin();
  const double seconds = RunOut(loop.get(), asking);
  const double fastest = Quantile(other.Latencies(), 0);
  if (fastest < static_cast<double>(work.shortest.count())) {
    throw std::runtime_error("a call of " + work.call.member + " takes " + std::to_string(fastest) +
                             " us, too little for a real one");
  }
  return Sum(one, seconds);
}

Load MedianOf(const std::vector<Load>& loads) {
  const auto median = [&loads](auto Load::*figure) {
    std::vector<double> figures;
    for (const Load& load : loads) {
      figures.push_back(static_cast<double>(load.*figure));
    }
    return Median(figures);
  };
  return {median(&Load::callsPerSecond), median(&Load::median), median(&Load::ninetyNinth),
          median(&Load::slowest), static_cast<std::size_t>(median(&Load::calls))};
}

}  // namespace TALO::Bench
