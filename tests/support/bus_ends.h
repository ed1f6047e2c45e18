#pragma once

#include "bus/message.h"

#include <utility>

/// Both ends of a bus connection without a bus daemon.
namespace TALO::Wifi::Bus {

/// A descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~Descriptor();

  int Get() const { return descriptor_; }
  int Release() { return std::exchange(descriptor_, -1); }
  /// A second descriptor of the same socket.
  Descriptor Duplicate() const;

 private:
  int descriptor_;
};

/// Two stream sockets that are connected with each other.
std::pair<Descriptor, Descriptor> ConnectedSockets();

/// A bus on a socket, started.
BusHandle StartClient(Descriptor socket);
BusHandle StartServer(Descriptor socket);
/// One that does not ask who the other end is.
BusHandle StartAnonymousServer(Descriptor socket);

/// Returns `result`; aborts the test program with the error's meaning where it is negative.
int MustSucceed(int result);

}  // namespace TALO::Wifi::Bus
