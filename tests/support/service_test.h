#pragma once

#include "daemon/service/service.h"
#include "support/admit_all.h"
#include "support/bus_pair.h"
#include "support/engine_test.h"
#include "support/operation_calls.h"

#include <cstdint>
#include <string>
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
    return SendCall<Method>(pair_, arguments...);
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
    return ValueOfAnswer<Method>(Settle(Send<Method>(arguments...)));
  }

  WPSSessions wps_{*engine_};
  ManualTimers timers_;
  ScheduleKeeper schedules_{*engine_, timers_};
  FakeRandom random_;
  Service service_{{*engine_, wps_, schedules_, random_, log_, "br-lan", AdmitAll}};
  BusPair pair_;
};

}  // namespace TALO::Wifid
