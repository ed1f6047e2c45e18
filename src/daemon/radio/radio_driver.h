#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"

#include <functional>
#include <vector>

namespace TALO::Wifid {

/// What applying a plan may leave alone.
enum class ApplyMode {
  WhatDiffers,  ///< the smallest change: what is as planned is not touched, and keeps its stations
  Everything,   ///< every BSS goes down and comes up again
};

/// The door to the radios. Every operation returns at once; one that takes time calls back later, on the
/// event loop.
class RadioDriver {
 public:
  /// Success, or RadioFailed with a sentence that names the radio and the reason.
  using Done = std::function<void(Result<void>)>;

  virtual ~RadioDriver() = default;

  /// Fixed from construction on.
  virtual const Capabilities& GetCapabilities() const = 0;

  /// Brings the radios to the plan, which holds every radio of the capabilities. `done` is called exactly
  /// once. On success all is as planned. On failure the radios may be anywhere between; the caller applies
  /// the plan before. Not called again before `done`.
  virtual void Apply(const std::vector<RadioPlan>& plan, ApplyMode mode, Done done) = 0;

  /// What is in the air now, one entry a radio in the order of the capabilities. Answers from memory, never
  /// waits.
  virtual std::vector<LiveRadio> GetLive() const = 0;
};

}  // namespace TALO::Wifid
