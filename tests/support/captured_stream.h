#pragma once

#include <ostream>
#include <sstream>
#include <string>

namespace TALO {

/// Keeps what is written to a stream from reaching its place, and shows it.
class CapturedStream {
 public:
  explicit CapturedStream(std::ostream& stream) : stream_(stream), before_(stream.rdbuf(text_.rdbuf())) {}
  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;
  ~CapturedStream() { stream_.rdbuf(before_); }

  std::string Text() const { return text_.str(); }

 private:
  std::ostringstream text_;
  std::ostream& stream_;
  std::streambuf* before_;
};

}  // namespace TALO
