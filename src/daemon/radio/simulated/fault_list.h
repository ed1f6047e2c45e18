#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/radio/simulated/hardware.h"

#include <optional>
#include <vector>

namespace TALO::Wifid {

/// The scenario's faults of one kind, counted down.
template <typename Fault>
class FaultList {
 public:
  FaultList(std::vector<Fault> faults, const Capabilities& capabilities)
      : faults_(std::move(faults)), capabilities_(capabilities) {}

  /// The fault that this operation on a radio meets. Counts the operation.
  std::optional<Fault> Next(RadioFrequency radio) {
    std::optional<Fault> met;
    for (Fault& fault : faults_) {
      if (RadioMeant(capabilities_, fault.radio) != radio) {
        continue;
      }
      if (fault.skip > 0) {
        --fault.skip;
      } else if (fault.times > 0 && !met) {
        --fault.times;
        met = fault;
      }
    }
    return met;
  }

 private:
  std::vector<Fault> faults_;
  const Capabilities& capabilities_;
};

}  // namespace TALO::Wifid
