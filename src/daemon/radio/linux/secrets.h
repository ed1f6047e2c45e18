#pragma once

#include "daemon/model/plan.h"

#include <map>
#include <set>
#include <string>

namespace TALO::Wifid {

/// The passphrases that other programs were given, to be kept out of what they say.
class Secrets {
 public:
  /// Those of a radio's plan, in the place of those it had, which are remembered once more: a program may
  /// still speak of them.
  void Learn(const RadioPlan& plan);

  /// A line with every passphrase in it replaced.
  std::string Hide(std::string line) const;

 private:
  /// The longest first: another may be a part of it.
  struct Before {
    bool operator()(const std::string& a, const std::string& b) const {
      return a.size() != b.size() ? a.size() > b.size() : a < b;
    }
  };
  using Words = std::set<std::string, Before>;
  struct OfRadio {
    Words now;
    Words before;
  };
  std::map<RadioFrequency, OfRadio> words_;
};

}  // namespace TALO::Wifid
