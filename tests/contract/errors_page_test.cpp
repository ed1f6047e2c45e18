// docs/errors.md, held against the errors that there are.

#include "bus/errors.h"
#include "support/files.h"
#include "values/errors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Wifi {

namespace {

/// The first two cells of each row that has a name in the first, and a text in the second.
std::vector<std::pair<std::string, std::string>> ReadRows() {
  std::vector<std::pair<std::string, std::string>> rows;
  const std::string page = ReadFile(TALOWIFI_ERRORS_PAGE);
  const std::string start = "\n| `";
  for (std::size_t at = 0; (at = page.find(start, at)) != std::string::npos; ++at) {
    const std::string line = page.substr(at + start.size(), page.find('\n', at + 1) - at - start.size());
    const std::size_t behindName = line.find("` | ");
    const std::size_t behindText = line.find(" | ", behindName + 4);
    rows.emplace_back(line.substr(0, behindName), line.substr(behindName + 4, behindText - behindName - 4));
  }
  return rows;
}

TEST(TheErrorsPage, HasARowForEveryErrorOfTheBus) {
  // No default: the compiler finds a code without a name here.
  const auto nameOf = [](ErrorCode code) -> std::string {
    switch (code) {
      case ErrorCode::RuntimeError:
        return "";  // the tool's own
      case ErrorCode::InvalidArgument:
        return "InvalidArgument";
      case ErrorCode::NotFound:
        return "NotFound";
      case ErrorCode::AlreadyExists:
        return "AlreadyExists";
      case ErrorCode::NotSupported:
        return "NotSupported";
      case ErrorCode::NotAllowed:
        return "NotAllowed";
      case ErrorCode::Busy:
        return "Busy";
      case ErrorCode::LimitReached:
        return "LimitReached";
      case ErrorCode::RadioFailed:
        return "RadioFailed";
      case ErrorCode::StorageFailed:
        return "StorageFailed";
      case ErrorCode::BusUnavailable:
        return "BusUnavailable";
      case ErrorCode::DaemonNotRunning:
        return "DaemonNotRunning";
      case ErrorCode::DaemonNotStarted:
        return "DaemonNotStarted";
      case ErrorCode::AccessDenied:
        return "AccessDenied";
      case ErrorCode::DaemonGone:
        return "DaemonGone";
      case ErrorCode::NoAnswer:
        return "NoAnswer";
      case ErrorCode::BadReply:
        return "BadReply";
      case ErrorCode::UnknownOperation:
        return "UnknownOperation";
      case ErrorCode::Unexpected:
        return "Unexpected";
    }
    return "";
  };
  std::vector<std::pair<std::string, std::string>> expected;
  for (int code = 0; code < 100; ++code) {
    if (const std::string name = nameOf(static_cast<ErrorCode>(code)); !name.empty()) {
      expected.emplace_back(name, ErrorCategory::get().message(code));
    }
  }
  EXPECT_EQ(ReadRows(), expected);
}

TEST(TheErrorsPage, NamesTheRefusalsAsTheBusDoes) {
  const auto rows = ReadRows();
  const auto codes = Bus::Refusals();
  ASSERT_GE(rows.size(), codes.size());
  for (std::size_t i = 0; i < codes.size(); ++i) {
    EXPECT_EQ(Bus::ErrorNameOf(codes[i]), "com.talo.Wifi1.Error." + rows[i].first);
  }
}

TEST(TheErrorsPage, ShowsTheSentenceOfAnAbsentDaemon) {
  const sd_bus_error error = SD_BUS_ERROR_MAKE_CONST(SD_BUS_ERROR_SERVICE_UNKNOWN, "no such name");
  try {
    Bus::ThrowCallError(error, "GetNetworkSettings");
  } catch (const talo::dbus::DbusError& failure) {
    EXPECT_THAT(ReadFile(TALOWIFI_ERRORS_PAGE),
                testing::HasSubstr(std::string("\n") + failure.what() + "\n"));
  }
}

}  // namespace

}  // namespace TALO::Wifi
