#include "daemon/service/endpoint.h"

#include "client/bytes.h"

#include <exception>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

PendingCall::PendingCall(sd_bus_message* call, std::shared_ptr<const Place> place)
    : call_(sd_bus_message_ref(call)), place_(std::move(place)) {}

PendingCall::~PendingCall() { Fail("the call was dropped"); }

bool PendingCall::TakeTurn() { return std::exchange(place_, nullptr) != nullptr; }

void PendingCall::Refuse(const Refusal& refusal) {
  if (!TakeTurn()) {
    return;
  }
  const char* name = Bus::ErrorNameOf(refusal.code);
  // A caller that has gone is no failure of ours: nothing is left to be done with the answer.
  sd_bus_reply_method_errorf(call_.get(), name != nullptr ? name : SD_BUS_ERROR_FAILED, "%s",
                             refusal.sentence.c_str());
}

Bus::Message PendingCall::NewReply() {
  sd_bus_message* reply = nullptr;
  if (sd_bus_message_new_method_return(call_.get(), &reply) < 0) {
    return nullptr;
  }
  return Bus::Message(reply);
}

void PendingCall::Send(sd_bus_message* reply) {
  if (!TakeTurn()) {
    return;
  }
  sd_bus_send(nullptr, reply, nullptr);
}

void PendingCall::Fail(const std::string& why) {
  if (!TakeTurn()) {
    return;
  }
  sd_bus_reply_method_errorf(call_.get(), SD_BUS_ERROR_FAILED, "the wifi daemon failed: %s",
                             Wifi::ToReadableText(why).c_str());
}

void Endpoint::Receive(sd_bus_message* message) const {
  const auto place = admit_(message);
  if (!place.Succeeded()) {
    sd_bus_reply_method_errorf(message, Bus::ErrorNameOf(place.Why().code), "%s",
                               place.Why().sentence.c_str());
    return;
  }
  const auto call = std::make_shared<PendingCall>(message, place.Value());
  if (!handle_) {
    call->Refuse(
        {ErrorCode::NotSupported, std::string("the wifi daemon does not support ") + operation_ + " yet"});
    return;
  }
  try {
    handle_(call);
  } catch (const Bus::CodecError& error) {
    call->Refuse({ErrorCode::InvalidArgument, std::string(operation_) + ": " + error.what()});
  } catch (const std::exception& failure) {
    // Not for sd-bus to answer: the handler may have answered, or the call answers when it is dropped.
    call->Fail(failure.what());
  }
}

}  // namespace TALO::Wifid
