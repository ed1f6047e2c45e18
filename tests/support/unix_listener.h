#pragma once

#include "support/descriptors.h"
#include "support/temporary_directory.h"

#include <string>

namespace TALO::EndToEnd {

/// A socket of this type (SOCK_STREAM or SOCK_DGRAM) at a path.
Descriptor BindUnixSocket(int type, const std::string& path);

/// Throws std::runtime_error, which names `awaited`, when the deadline passes before.
void WaitUntilReadable(int descriptor, const char* awaited);

/// A socket that somebody listens on who is no bus.
class UnixListener {
 public:
  UnixListener();

  std::string Address() const { return "unix:path=" + path_; }

  /// Waits for a caller. Throws std::runtime_error when none comes.
  Descriptor Accept() const;

  /// Closes the socket, whose path stays.
  void Close() { socket_ = Descriptor(); }

 private:
  TemporaryDirectory directory_;
  std::string path_;
  Descriptor socket_;
};

/// Waits until the caller has said something and takes it all.
void ReadGreeting(int descriptor);

}  // namespace TALO::EndToEnd
