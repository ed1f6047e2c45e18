#pragma once

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <string>
#include <system_error>

namespace TALO::Wifid {

/// The permission bits of a file or directory.
inline mode_t ModeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

/// What taking a directory throws, empty when it does not.
template <typename Directory>
std::string FailureOf(const std::string& path) {
  try {
    const Directory taken(path);
  } catch (const std::system_error& failure) {
    return failure.what();
  }
  return "";
}

}  // namespace TALO::Wifid
