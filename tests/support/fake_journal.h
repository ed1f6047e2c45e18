#pragma once

#include "daemon/service/journal_sink.h"

#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// A journal that keeps its lines for the test.
class FakeJournal final : public JournalSink {
 public:
  bool isThere = true;
  bool takesLines = true;

  bool IsThere() const override { return isThere; }

  bool Send(const std::vector<std::string>& fields) const override {
    if (takesLines) {
      last_ = fields;
    }
    return takesLines;
  }

  /// The fields of the line that came last, none where none came since this was last asked.
  std::vector<std::string> TakeLast() const { return std::exchange(last_, {}); }

 private:
  mutable std::vector<std::string> last_;
};

}  // namespace TALO::Wifid
