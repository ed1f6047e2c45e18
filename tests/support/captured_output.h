#pragma once

#include <ios>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace TALO::Tool {

/// Sends what is written to a stream into another buffer until it is destroyed. Afterwards the stream is good
/// and formats as before, whatever was left pending.
class RedirectedStream {
 public:
  RedirectedStream(std::ostream& stream, std::streambuf& buffer)
      : stream_(stream), before_(stream.rdbuf(&buffer)) {
    format_.copyfmt(stream);
  }
  ~RedirectedStream() {
    stream_.rdbuf(before_);
    stream_.copyfmt(format_);
  }
  RedirectedStream(const RedirectedStream&) = delete;
  RedirectedStream& operator=(const RedirectedStream&) = delete;

 private:
  std::ostream& stream_;
  std::streambuf* before_;
  std::ios format_{nullptr};
};

/// What `print` writes to standard output.
template <typename Print>
std::string outputOf(Print print) {
  std::stringbuf output;
  const RedirectedStream redirected(std::cout, output);
  print();
  return output.str();
}

}  // namespace TALO::Tool
