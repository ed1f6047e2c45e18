#include "support/private_bus.h"

#include "support/files.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace TALO::EndToEnd {

namespace {

std::string BusConfig(const std::string& socket, const std::string& services, const BusSetup& setup) {
  return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" +
         socket + R"(</listen>
  <servicedir>)" +
         services + R"(</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
    )" + setup.policy +
         R"(
  </policy>
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
  WriteFile(config, BusConfig(directory_ / "bus", services, setup));

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
