#include "support/test_connection.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <limits>

namespace TALO::EndToEnd {

using Wifi::Bus::BusError;
using Wifi::Bus::BusHandle;
using Wifi::Bus::CheckMessage;
using Wifi::Bus::Message;

namespace {

constexpr const char* kDaemonName = "com.talo.Wifi1";
constexpr const char* kBusName = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr const char* kLogPath = "/org/freedesktop/LogControl1";
constexpr const char* kLogInterface = "org.freedesktop.LogControl1";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

/// Until when sd-bus wants to be asked again at the latest, as milliseconds for poll().
int PollTimeout(sd_bus* bus, const Deadline& deadline) {
  std::uint64_t wanted = 0;
  CheckMessage(sd_bus_get_timeout(bus, &wanted));
  if (wanted == std::numeric_limits<std::uint64_t>::max()) {
    return deadline.ForPoll();
  }
  using namespace std::chrono;
  const auto end = steady_clock::time_point(duration_cast<steady_clock::duration>(microseconds(wanted)));
  const auto left = ceil<milliseconds>(end - steady_clock::now()).count();
  return static_cast<int>(std::clamp<milliseconds::rep>(left, 0, deadline.ForPoll()));
}

void WaitForEvent(sd_bus* bus, int wake, const Deadline& deadline) {
  const int events = CheckMessage(sd_bus_get_events(bus));
  std::array<pollfd, 2> ready = {pollfd{sd_bus_get_fd(bus), static_cast<short>(events), 0},
                                 pollfd{wake, POLLIN, 0}};
  if (poll(ready.data(), ready.size(), PollTimeout(bus, deadline)) < 0 && errno != EINTR) {
    ThrowErrno("the bus cannot be waited for");
  }
}

}  // namespace

BusHandle OpenBus(const std::string& address, bool asMonitor) {
  sd_bus* bus = nullptr;
  CheckMessage(sd_bus_new(&bus));
  BusHandle handle(bus);
  CheckMessage(sd_bus_set_address(bus, address.c_str()));
  CheckMessage(sd_bus_set_bus_client(bus, 1));
  CheckMessage(sd_bus_set_monitor(bus, asMonitor ? 1 : 0));
  CheckMessage(sd_bus_start(bus));
  return handle;
}

namespace {

// The system calls themselves change this thread alone, and the library's functions all of the process.
void SetGroups(const std::vector<gid_t>& groups) {
  if (syscall(SYS_setgroups, groups.size(), groups.data()) != 0) {
    ThrowErrno("the groups cannot be set");
  }
}

void SetEffective(long call, id_t id) {
  constexpr id_t kSame = static_cast<id_t>(-1);
  if (syscall(call, kSame, id, kSame) != 0) {
    ThrowErrno("the user cannot be changed");
  }
}

/// Makes the thread another user's and back.
class ActingAs {
 public:
  explicit ActingAs(const User& user) : groups_(static_cast<std::size_t>(getgroups(0, nullptr))) {
    if (getgroups(static_cast<int>(groups_.size()), groups_.data()) < 0) {
      ThrowErrno("the groups cannot be read");
    }
    SetGroups(user.groups);
    SetEffective(SYS_setresgid, user.group);
    SetEffective(SYS_setresuid, user.id);
  }
  ActingAs(const ActingAs&) = delete;
  ActingAs& operator=(const ActingAs&) = delete;
  ~ActingAs() {
    SetEffective(SYS_setresuid, getuid());
    SetEffective(SYS_setresgid, getgid());
    SetGroups(groups_);
  }

 private:
  std::vector<gid_t> groups_;
};

}  // namespace

// The bus knows whom a socket was connected by.
BusHandle OpenBusAs(const std::string& address, const User& user) {
  const ActingAs other(user);
  return OpenBus(address);
}

void ProcessBusUntil(sd_bus* bus, int wake, const std::string& awaited, const std::function<bool()>& done,
                     const std::function<void(sd_bus_message*)>& receive) {
  const Deadline deadline;
  while (!done()) {
    if (deadline.HasPassed()) {
      throw std::runtime_error(awaited + " does not come");
    }
    sd_bus_message* received = nullptr;
    const int result = sd_bus_process(bus, &received);
    const Message message(received);
    if (result < 0) {
      throw std::runtime_error("the bus breaks before " + awaited);
    }
    if (message && receive) {
      receive(message.get());
    }
    if (result == 0) {
      WaitForEvent(bus, wake, deadline);
    }
  }
}

TestConnection::TestConnection(const std::string& address) : bus_(OpenBus(address)) {}

int TestConnection::OnOwnerChanged(sd_bus_message* signal, void* watch, sd_bus_error*) {
  const char* name = nullptr;
  const char* before = nullptr;
  const char* after = nullptr;
  if (sd_bus_message_read(signal, "sss", &name, &before, &after) >= 0) {
    static_cast<OwnerWatch*>(watch)->hasOwner = *after != '\0';
  }
  return 0;
}

void TestConnection::WaitForOwnerToBe(bool present, const Process* daemon) {
  OwnerWatch watch;
  sd_bus_slot* slot = nullptr;
  const std::string rule = std::string("type='signal',sender='") + kBusName +
                           "',member='NameOwnerChanged',arg0='" + kDaemonName + "'";
  // Watched first, asked then: no change is missed.
  CheckMessage(sd_bus_add_match(bus_.get(), &slot, rule.c_str(), OnOwnerChanged, &watch));
  const Wifi::Bus::Slot match(slot);
  watch.hasOwner = HasOwner();
  ProcessBusUntil(bus_.get(), daemon != nullptr ? daemon->EndDescriptor() : -1,
                  present ? "an owner of the daemon's name" : "the end of the owner of the daemon's name",
                  [&] {
                    if (daemon != nullptr && daemon->HasEnded()) {
                      throw std::runtime_error("the daemon ends at its start:\n" + daemon->Errors());
                    }
                    return watch.hasOwner == present;
                  });
}

void TestConnection::WaitForOwner(const Process& daemon) { WaitForOwnerToBe(true, &daemon); }

void TestConnection::WaitForNoOwner() { WaitForOwnerToBe(false, nullptr); }

Message TestConnection::NewCall(const char* name, const char* path, const char* interface,
                                const char* member) {
  sd_bus_message* call = nullptr;
  CheckMessage(sd_bus_message_new_method_call(bus_.get(), &call, name, path, interface, member));
  return Message(call);
}

Message TestConnection::Call(const Message& call) {
  BusError error;
  sd_bus_message* reply = nullptr;
  if (sd_bus_call(bus_.get(), call.get(), 0, error.Get(), &reply) < 0) {
    throw CallError((*error).name, (*error).message != nullptr ? (*error).message : "");
  }
  return Message(reply);
}

bool TestConnection::HasOwner() {
  const Message call = NewCall(kBusName, kBusPath, kBusName, "NameHasOwner");
  CheckMessage(sd_bus_message_append(call.get(), "s", kDaemonName));
  int has = 0;
  CheckMessage(sd_bus_message_read(Call(call).get(), "b", &has));
  return has != 0;
}

std::string TestConnection::Introspect(const char* path) {
  const Message reply = Call(NewCall(kDaemonName, path, "org.freedesktop.DBus.Introspectable", "Introspect"));
  const char* text = nullptr;
  CheckMessage(sd_bus_message_read(reply.get(), "s", &text));
  return text;
}

std::string TestConnection::GetLogLevel() {
  const Message call = NewCall(kDaemonName, kLogPath, kProperties, "Get");
  CheckMessage(sd_bus_message_append(call.get(), "ss", kLogInterface, "LogLevel"));
  const Message reply = Call(call);
  const char* level = nullptr;
  CheckMessage(sd_bus_message_read(reply.get(), "v", "s", &level));
  return level;
}

void TestConnection::SetLogLevel(const char* level) {
  const Message call = NewCall(kDaemonName, kLogPath, kProperties, "Set");
  CheckMessage(sd_bus_message_append(call.get(), "ssv", kLogInterface, "LogLevel", "s", level));
  Call(call);
}

void TestConnection::Activate() {
  const Message call = NewCall(kBusName, kBusPath, kBusName, "StartServiceByName");
  CheckMessage(sd_bus_message_append(call.get(), "su", kDaemonName, std::uint32_t{0}));
  Call(call);
}

}  // namespace TALO::EndToEnd
