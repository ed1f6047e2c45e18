#pragma once

#include "daemon/model/result.h"

#include <systemd/sd-bus.h>

#include <functional>
#include <memory>

namespace TALO::Wifid {

/// A call's place among those that the daemon works on; given back when it goes.
class Place {
 public:
  Place() = default;
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;
  virtual ~Place() = default;

  /// False once the caller has left the bus.
  virtual bool CallerIsHere() const = 0;
};

/// Takes a call in, or says why not.
using Admission = std::function<Result<std::shared_ptr<const Place>>(sd_bus_message* call)>;

}  // namespace TALO::Wifid
