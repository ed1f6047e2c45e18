#pragma once

#include "bus/operations.h"
#include "daemon/service/service.h"
#include "support/bus_pair.h"
#include "support/engine_test.h"

#include <stdexcept>
#include <string>
#include <tuple>
#include <variant>

namespace TALO::Wifid {

/// The daemon's objects on a bus, over an engine with the networks 1 and 2. The radios are done with what a
/// call asks of them before its answer is waited for.
class ServiceTest : public EngineTest {
 protected:
  ServiceTest() {
    driver_.SetEventSink([this](const RadioEvent& event) {
      if (const auto* finished = std::get_if<WPSFinished>(&event)) {
        wps_.Finished(*finished);
      }
    });
    service_.Attach(pair_.Server());
  }

  template <auto Method, typename... Arguments>
  std::uint64_t Send(const Arguments&... arguments) {
    namespace Bus = Wifi::Bus;
    const Bus::Message call = pair_.NewCall(Bus::InterfaceOf<Method>::name.text, Bus::NameOf<Method>());
    Bus::MethodTraits<Method>::ArgumentsCodec::Append(call.get(), arguments...);
    return pair_.Send(call.get());
  }

  sd_bus_message* Settle(std::uint64_t cookie) {
    pair_.RunUntilQuiet();
    driver_.FinishAll();
    return pair_.WaitForAnswer(cookie);
  }

  /// The error of the answer, "none" for success.
  template <auto Method, typename... Arguments>
  std::string ErrorOfCall(const Arguments&... arguments) {
    return ErrorOf(Settle(Send<Method>(arguments...)));
  }

  /// The value of the answer.
  template <auto Method, typename... Arguments>
  auto Value(const Arguments&... arguments) {
    sd_bus_message* answer = Settle(Send<Method>(arguments...));
    if (ErrorOf(answer) != "none") {
      throw std::runtime_error(ErrorOf(answer));
    }
    return Wifi::Bus::MethodTraits<Method>::ResultCodec::Read(answer);
  }

  WPSSessions wps_{*engine_};
  ManualTimers timers_;
  ScheduleKeeper schedules_{*engine_, timers_};
  FakeRandom random_;
  Service service_{{*engine_, wps_, schedules_, random_, log_, "br-lan"}};
  BusPair pair_;
};

}  // namespace TALO::Wifid
