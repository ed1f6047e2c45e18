#pragma once

#include "daemon/model/result.h"
#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/own_timers.h"
#include "values/enums.h"

#include <functional>
#include <list>
#include <string>

namespace TALO::Wifid {

/// Sees to it that the kernel has the country that a plan asks for. There is one for all radios.
class CountryKeeper {
 public:
  using Done = std::function<void(Result<void>)>;

  CountryKeeper(Kernel& kernel, Timers& timers);
  CountryKeeper(const CountryKeeper&) = delete;
  CountryKeeper& operator=(const CountryKeeper&) = delete;
  ~CountryKeeper();

  /// Calls back when the country is in force, from inside the call where it is already. RadioFailed when the
  /// kernel has not taken it within five seconds; what it does not know it answers with the world's rules,
  /// some seconds later. Where a station has heard of another country, what both
  /// allow is taken for it.
  void Require(Wifi::CountryCode country, Done done);

 private:
  struct Waiting {
    std::string code;
    Done done;
    Timers::Id deadline;
  };

  void Look();
  static bool IsServed(const std::string& code, const std::string& now);
  /// Whether the country is in force at the deadline.
  Result<void> Judge(const std::string& code) const;

  Kernel& kernel_;
  OwnTimers timers_;
  std::list<Waiting> waiting_;
  std::string served_;  ///< the code that was required last and came into force
};

}  // namespace TALO::Wifid
