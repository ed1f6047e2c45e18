#pragma once

#include "bus/errors.h"
#include "bus/message.h"
#include "bus/operations.h"
#include "daemon/model/result.h"
#include "daemon/service/admission.h"

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

/// Where a call arrives: decoded once, answered exactly once.
namespace TALO::Wifid {

/// A call that is waiting for its answer. An abandoned one is answered with an error, so that no caller waits
/// in vain.
class PendingCall {
 public:
  /// Takes a reference to the message of the call; keeps its place until it is answered.
  PendingCall(sd_bus_message* call, std::shared_ptr<const Place> place);
  PendingCall(const PendingCall&) = delete;
  PendingCall& operator=(const PendingCall&) = delete;
  ~PendingCall();

  void Refuse(const Refusal& refusal);
  /// Answers that the daemon itself is at fault.
  void Fail(const std::string& why);

  /// Answers with what `append` puts into the reply.
  template <typename Append>
  void Answer(Append append) {
    const Wifi::Bus::Message reply = NewReply();
    try {
      append(reply.get());
    } catch (const Wifi::Bus::CodecError& error) {
      Fail(error.what());
      return;
    }
    Send(reply.get());
  }

  sd_bus_message* Get() const { return call_.get(); }
  /// Whether there is still somebody to answer.
  bool IsAwaited() const { return place_ != nullptr && place_->CallerIsHere(); }

 private:
  Wifi::Bus::Message NewReply();
  void Send(sd_bus_message* reply);

  /// Whether this is the first answer, which counts; the place is free then.
  bool TakeTurn();

  Wifi::Bus::Message call_;
  std::shared_ptr<const Place> place_;  ///< null once answered
};

/// Takes a handler's result to the caller, now or later. Copies answer the same call; only the first answer
/// counts.
template <typename Answer>
class Responder {
 public:
  explicit Responder(std::shared_ptr<PendingCall> call) : call_(std::move(call)) {}

  void operator()(const Result<Answer>& result) const {
    if (!result.Succeeded()) {
      call_->Refuse(result.Why());
    } else if constexpr (std::is_void_v<Answer>) {
      call_->Answer([](sd_bus_message*) {});
    } else {
      call_->Answer([&result](sd_bus_message* reply) {
        Wifi::Bus::ResultCodec<Answer>::Append(reply, result.Value());
      });
    }
  }

  bool IsAwaited() const { return call_->IsAwaited(); }

 private:
  std::shared_ptr<PendingCall> call_;
};

/// What the daemon does with calls of one operation. One without a handler refuses with NotSupported.
class Endpoint {
 public:
  Endpoint(const char* operation, Admission admit) : operation_(operation), admit_(std::move(admit)) {}

  /// Sets what is done with a call of `Method`: `handler(arguments..., Responder)`.
  template <auto Method, typename Handler>
  void Handle(Handler handler) {
    using Traits = Wifi::Bus::MethodTraits<Method>;
    handle_ = [handler](const std::shared_ptr<PendingCall>& call) {
      auto arguments = Traits::ArgumentsCodec::Read(call->Get());
      std::apply([&](auto&... values) { handler(values..., Responder<typename Traits::Result>(call)); },
                 arguments);
    };
  }

  /// A call of this operation arrived.
  void Receive(sd_bus_message* message) const;

 private:
  const char* operation_;
  Admission admit_;
  std::function<void(const std::shared_ptr<PendingCall>&)> handle_;
};

}  // namespace TALO::Wifid
