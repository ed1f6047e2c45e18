#include "support/bus_ends.h"

#include <sys/socket.h>
#include <systemd/sd-id128.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace TALO::Wifi::Bus {

int MustSucceed(int result) {
  if (result < 0) {
    throw std::system_error(-result, std::generic_category(), "a test's end of the bus");
  }
  return result;
}

Descriptor::~Descriptor() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
}

Descriptor Descriptor::Duplicate() const {
  const int copy = dup(descriptor_);
  return Descriptor(MustSucceed(copy < 0 ? -errno : copy));
}

std::pair<Descriptor, Descriptor> ConnectedSockets() {
  int sockets[2] = {-1, -1};
  MustSucceed(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) < 0 ? -errno : 0);
  return {Descriptor(sockets[0]), Descriptor(sockets[1])};
}

namespace {

BusHandle NewBus(Descriptor socket) {
  sd_bus* bus = nullptr;
  MustSucceed(sd_bus_new(&bus));
  BusHandle handle(bus);
  MustSucceed(sd_bus_set_fd(bus, socket.Get(), socket.Get()));
  // Belongs to the bus now.
  socket.Release();
  return handle;
}

}  // namespace

BusHandle StartClient(Descriptor socket) {
  BusHandle bus = NewBus(std::move(socket));
  MustSucceed(sd_bus_start(bus.get()));
  return bus;
}

namespace {

BusHandle Serve(BusHandle bus) {
  sd_id128_t id{};
  MustSucceed(sd_id128_randomize(&id));
  MustSucceed(sd_bus_set_server(bus.get(), 1, id));
  MustSucceed(sd_bus_start(bus.get()));
  return bus;
}

}  // namespace

BusHandle StartServer(Descriptor socket) { return Serve(NewBus(std::move(socket))); }

BusHandle StartAnonymousServer(Descriptor socket) {
  BusHandle bus = NewBus(std::move(socket));
  MustSucceed(sd_bus_set_anonymous(bus.get(), 1));
  return Serve(std::move(bus));
}

}  // namespace TALO::Wifi::Bus
