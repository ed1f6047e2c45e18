#include "attack/attacker.h"

#include "bus/names.h"
#include "support/test_connection.h"

namespace TALO::Attack {

using Wifi::Bus::CheckMessage;

Attacker::Attacker(const std::string& address) : bus_(EndToEnd::OpenBus(address)) {}

void Attacker::Send(const Target& target, const Fill& fill) {
  sd_bus_message* call = nullptr;
  CheckMessage(sd_bus_message_new_method_call(bus_.get(), &call, Wifi::Bus::kBusName, target.path.c_str(),
                                              target.interface.c_str(), target.member.c_str()));
  const Wifi::Bus::Message owned(call);
  fill(call);
  CheckMessage(sd_bus_call_async(bus_.get(), nullptr, call, &OnAnswer, this, UINT64_MAX));
  ++awaited_;
}

void Attacker::Flush() { CheckMessage(sd_bus_flush(bus_.get())); }

void Attacker::WaitForAnswers() {
  EndToEnd::ProcessBusUntil(bus_.get(), -1, "the answer to every call", [this] { return awaited_ == 0; });
}

int Attacker::OnAnswer(sd_bus_message* answer, void* attacker, sd_bus_error*) {
  auto& self = *static_cast<Attacker*>(attacker);
  const sd_bus_error* error = sd_bus_message_get_error(answer);
  ++self.answers_[error != nullptr ? error->name : "result"];
  --self.awaited_;
  return 1;
}

}  // namespace TALO::Attack
