#include "support/private_bus.h"

#include "support/files.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace TALO::EndToEnd {

namespace {

/// What the bus's own configuration says on every machine.
constexpr const char* kSystemRules = R"(
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>
)";

constexpr const char* kOpenRules = R"(
    <allow user="*"/>
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
)";

std::string BusConfig(const std::string& socket, const std::string& services, const std::string& policies,
                      const BusSetup& setup) {
  return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" +
         socket + R"(</listen>
  <servicedir>)" +
         services + R"(</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">)" +
         (setup.policyFile.empty() ? kOpenRules : kSystemRules) + setup.policy +
         R"(
  </policy>
  <includedir>)" +
         policies + R"(</includedir>
  <limit name="service_start_timeout">)" +
         std::to_string(setup.startTimeout) + R"(</limit>
</busconfig>
)";
}

/// The first line that comes out of a pipe; less where its writer ends before.
std::string ReadLine(int descriptor, const Deadline& deadline) {
  std::string line;
  for (;;) {
    pollfd ready{descriptor, POLLIN, 0};
    char c = 0;
    if (poll(&ready, 1, deadline.ForPoll()) <= 0 || read(descriptor, &c, 1) <= 0 || c == '\n') {
      return line;
    }
    line += c;
  }
}

}  // namespace

PrivateBus::PrivateBus(const BusSetup& setup) {
  const std::string services = directory_ / "services";
  std::filesystem::create_directory(services);
  if (!setup.activation.empty()) {
    WriteFile(services + "/com.talo.Wifi1.service",
              "[D-BUS Service]\nName=com.talo.Wifi1\nExec=" + setup.activation + "\n");
  }
  const std::string config = directory_ / "bus.conf";
  const std::string policies = directory_ / "policies";
  std::filesystem::create_directory(policies);
  if (!setup.policyFile.empty()) {
    WriteFile(policies + "/com.talo.Wifi1.conf", setup.policyFile);
  }
  WriteFile(config, BusConfig(directory_ / "bus", services, policies, setup));
  // Other users come to the socket, if the policy lets them.
  std::filesystem::permissions(directory_ / "", std::filesystem::perms(0755));

  Pipe pipe = OpenPipe();
  process_ = std::make_unique<Process>(
      ProcessSetup{.words = {"dbus-daemon", "--config-file=" + config, "--nofork", "--print-address=1"},
                   .output = ProcessSetup::Output::Given,
                   .givenOutput = pipe.writer.Get()});
  pipe.writer = Descriptor();
  // It prints its address once it listens.
  address_ = ReadLine(pipe.reader.Get(), Deadline());
  if (address_.empty()) {
    throw std::runtime_error("no bus can be started: " + process_->Errors());
  }
}

}  // namespace TALO::EndToEnd
