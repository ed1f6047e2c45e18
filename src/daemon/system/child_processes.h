#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/system/ending_programs.h"
#include "daemon/system/event_watch.h"

#include <memory>

namespace TALO::Wifid {

/// Children as processes of this machine. The thread that starts them must live as long as they.
class ChildProcesses final : public Children {
 public:
  /// The loop must outlive this, and this the children.
  explicit ChildProcesses(const Loop& loop) : loop_(loop), endings_(loop) {}

  Result<std::unique_ptr<Child>> Start(const Program& program, LineSink line, EndSink ended) override;

 private:
  const Loop& loop_;
  EndingPrograms endings_;
};

}  // namespace TALO::Wifid
