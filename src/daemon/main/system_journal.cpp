#include "daemon/main/system_journal.h"

#include <sys/stat.h>
#include <sys/uio.h>
#include <systemd/sd-daemon.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace TALO::Wifid {

bool SystemJournal::IsThere() const { return access("/run/systemd/journal/socket", W_OK) == 0; }

bool SystemJournal::Send(const std::vector<std::string>& fields) const {
  std::vector<iovec> parts;
  parts.reserve(fields.size());
  for (const std::string& field : fields) {
    parts.push_back({const_cast<char*>(field.data()), field.size()});
  }
  // sd-journal calls it a success where there is no journal at all.
  return IsThere() && sd_journal_sendv(parts.data(), static_cast<int>(parts.size())) >= 0;
}

// The variable names the stream it was set for: a shell started by a service inherits the one, not the other.
bool ErrorsGoToJournal() {
  const char* stream = std::getenv("JOURNAL_STREAM");
  struct stat errors {};
  return stream != nullptr && fstat(STDERR_FILENO, &errors) == 0 &&
         std::to_string(errors.st_dev) + ":" + std::to_string(errors.st_ino) == stream;
}

void SayWhyNot(const std::string& sentence) {
  // The journal takes a line's level from its front.
  std::cerr << (ErrorsGoToJournal() ? SD_ERR : "") << "talowifid: " << sentence << std::endl;
}

}  // namespace TALO::Wifid
