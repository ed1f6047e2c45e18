#include "bench/full_router.h"
#include "bench/table.h"
#include "client/wifi_client_for_topo.h"
#include "support/deadline.h"
#include "support/files.h"

#include <csignal>
#include <filesystem>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace TALO::Bench {

namespace {

constexpr double kGoalOfBytes = 16384;
constexpr double kGoalOfSyncs = 2;  // the file and its directory: fewer could be lost

/// Watches what the threads of a process write and sync. Each has a file of its own: in a common one, calls
/// that others come between are torn in two.
class DiskWatch {
 public:
  explicit DiskWatch(const EndToEnd::Process& watched)
      : tracer_(
            {.words = {"strace", "-ff", "-y", "-s", "0", "-o", logs_ / "thread", "-e",
                       "trace=write,pwrite64,writev,fsync,fdatasync", "-p", std::to_string(watched.Id())}}) {
    const EndToEnd::Deadline deadline;
    while (tracer_.Errors().find("attached") == std::string::npos) {
      if (tracer_.HasEnded() || deadline.HasPassed()) {
        throw std::runtime_error("what the daemon writes cannot be watched: " + tracer_.Errors());
      }
    }
  }

  /// Ends it and returns its lines.
  std::string Lines() {
    tracer_.SendSignal(SIGINT);
    tracer_.Wait();
    std::string lines;
    for (const auto& log : std::filesystem::directory_iterator(logs_ / "")) {
      lines += ReadFile(log.path());
    }
    return lines;
  }

 private:
  TemporaryDirectory logs_;
  EndToEnd::Process tracer_;
};

double Count(const std::string& text, const std::string& pattern) {
  const std::regex wanted(pattern);
  return static_cast<double>(
      std::distance(std::sregex_iterator(text.begin(), text.end(), wanted), std::sregex_iterator()));
}

/// Of what stands on the disk, not of pipes and sockets.
double BytesWritten(const std::string& lines) {
  const std::regex written(R"(write(?:64|v)?\(\d+</[^>]*>.* = (\d+))");
  double sum = 0;
  for (std::sregex_iterator found(lines.begin(), lines.end(), written), end; found != end; ++found) {
    sum += std::stod((*found)[1]);
  }
  return sum;
}

}  // namespace

void MeasureChange(const Effort& effort) {
  PrintHeading("One change to a state of 16 networks");
  FullRouter router;
  const auto client = Wifi::WifiClientFactoryForTopo::GetInstance();
  client->SetContext("before");
  const std::size_t changes = effort.Or(2, 20);
  DiskWatch watch(router.Daemon());
  for (std::size_t i = 0; i < changes; ++i) {
    client->SetContext("context " + std::to_string(i % 10));
  }
  const std::string lines = watch.Lines();
  const auto one = static_cast<double>(changes);
  PrintFigure("bytes written", BytesWritten(lines) / one, "bytes", AtMost(kGoalOfBytes));
  PrintFigure("files and directories synced", Count(lines, R"(f(?:data)?sync\()") / one, "syncs",
              AtMost(kGoalOfSyncs));
}

}  // namespace TALO::Bench
