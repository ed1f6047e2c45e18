// Stands in for the wifi daemon and answers listings of as many records as asked for: more than any router
// has.
//
// usage: bench-listing-service RECORDS

#include "bus/connection.h"
#include "bus/names.h"
#include "bus/operations.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace TALO::Wifi;
using Bus::CheckMessage;

std::vector<DeviceInfo> Devices(int count) {
  std::vector<DeviceInfo> devices;
  for (int i = 0; i < count; ++i) {
    char address[sizeof "00:00:00:00:00:00"];
    std::snprintf(address, sizeof address, "0a:00:00:%02x:%02x:%02x", (i >> 16) & 0xff, (i >> 8) & 0xff,
                  i & 0xff);
    devices.push_back({.address = Util::MACAddress(address),
                       .name = "device-" + std::to_string(i),
                       .ipAddress = "192.168.1.11",
                       .networkId = 1,
                       .ssid = "Home",
                       .radio = Util::RadioFrequency::Band5GHz,
                       .interface = "wlan1_1",
                       .signal = -50,
                       .transmitRate = 866,
                       .receiveRate = 433,
                       .connectedTime = i});
  }
  return devices;
}

std::map<std::string, Util::RadioFrequency> Radios(int count) {
  std::map<std::string, Util::RadioFrequency> radios;
  for (int i = 0; i < count; ++i) {
    radios["wlan0_" + std::to_string(i)] = Util::RadioFrequency::Band2_4GHz;
  }
  return radios;
}

template <auto Method>
void Answer(sd_bus_message* call, const typename Bus::MethodTraits<Method>::Result& result) {
  sd_bus_message* answer = nullptr;
  CheckMessage(sd_bus_message_new_method_return(call, &answer));
  const Bus::Message owned(answer);
  Bus::MethodTraits<Method>::ResultCodec::Append(answer, result);
  CheckMessage(sd_bus_message_send(answer));
}

void Serve(sd_bus* bus, int count) {
  const std::vector<DeviceInfo> devices = Devices(count);
  const std::map<std::string, Util::RadioFrequency> radios = Radios(count);
  for (;;) {
    sd_bus_message* received = nullptr;
    const int result = CheckMessage(sd_bus_process(bus, &received));
    const Bus::Message call(received);
    if (result == 0) {
      CheckMessage(sd_bus_wait(bus, UINT64_MAX));
    } else if (sd_bus_message_is_method_call(received, "org.freedesktop.DBus.Properties", "Get") > 0) {
      CheckMessage(sd_bus_reply_method_return(received, "v", "s", "debug"));
    } else if (sd_bus_message_is_method_call(received, nullptr, "GetDevices") > 0) {
      Answer<&WifiClient::GetDevices>(received, devices);
    } else if (sd_bus_message_is_method_call(received, nullptr, "GetNetworkInterfaceRadioMap") > 0) {
      Answer<&WifiClient::GetNetworkInterfaceRadioMap>(received, radios);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    return 2;
  }
  try {
    sd_bus* bus = nullptr;
    CheckMessage(sd_bus_open_system(&bus));
    const Bus::BusHandle owned(bus);
    CheckMessage(sd_bus_request_name(bus, Bus::kBusName, 0));
    Serve(bus, std::stoi(argv[1]));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench-listing-service: %s\n", failure.what());
    return 1;
  }
}
