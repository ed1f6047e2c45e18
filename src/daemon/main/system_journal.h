#pragma once

#include "daemon/service/journal_sink.h"

namespace TALO::Wifid {

/// The journal of this machine.
class SystemJournal final : public JournalSink {
 public:
  bool IsThere() const override;
  bool Send(const std::vector<std::string>& fields) const override;
};

/// True where the service manager sends this process's standard error to the journal.
bool ErrorsGoToJournal();

/// Says on standard error why the daemon cannot run, as an error where that goes to the journal.
void SayWhyNot(const std::string& sentence);

}  // namespace TALO::Wifid
