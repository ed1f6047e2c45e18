#include "daemon/service/bus_announcer.h"

#include "bus/message.h"
#include "bus/names.h"
#include "bus/operations.h"
#include "bus/signals.h"
#include "daemon/service/event_log.h"
#include "daemon/service/unsent_messages.h"

#include <string>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

template <typename... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

// A signal that cannot be sent must not fail the change that it tells of: that is stored and in the air.
template <typename Signal, typename... Values>
void BusAnnouncer::Send(const Values&... values) {
  if (bus_ == nullptr) {
    return;
  }
  try {
    if (HasTooManyUnsent(bus_)) {
      return;
    }
    sd_bus_message* message = nullptr;
    Bus::CheckMessage(sd_bus_message_new_signal(bus_, &message, Bus::kObjectPath, Bus::General::name.text,
                                                Signal::name.text));
    const Bus::Message signal(message);
    Signal::ValuesCodec::Append(signal.get(), values...);
    Bus::CheckMessage(sd_bus_send(bus_, signal.get(), nullptr));
  } catch (const Bus::CodecError& error) {
    log_.Write(Severity::Warning,
               std::string("the signal ") + Signal::name.text + " was not sent: " + error.what());
  }
}

void BusAnnouncer::NetworksChanged() { Send<Bus::NetworksChangedSignal>(); }

void BusAnnouncer::Happened(const RadioEvent& event) {
  std::visit(
      Overloaded{
          [this](const StationConnected& connected) {
            Send<Bus::StationConnectedSignal>(connected.address, connected.networkId, connected.interface);
          },
          [this](const StationDisconnected& gone) {
            Send<Bus::StationDisconnectedSignal>(gone.address, gone.networkId, gone.interface, gone.reason);
          },
          [this](const RadioStateChanged& changed) {
            Send<Bus::RadioStateChangedSignal>(changed.radio, changed.up);
          },
          [this](const WPSFinished& finished) {
            Send<Bus::WPSFinishedSignal>(finished.interface, WordOf(finished.outcome));
          },
      },
      event);
}

}  // namespace TALO::Wifid
