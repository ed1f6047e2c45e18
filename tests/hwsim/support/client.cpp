#include "hwsim/support/client.h"

#include "hwsim/support/waiting.h"
#include "support/files.h"

#include <chrono>
#include <sstream>
#include <stdexcept>

namespace TALO::Hwsim {

namespace {

/// The value behind `key` and the sign in a text of lines, empty where there is none.
std::string LineOf(const std::string& text, const std::string& key) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(key)) {
      return line.substr(key.size());
    }
  }
  return "";
}

}  // namespace

std::string Hexadecimal(const std::string& bytes) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string digits;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    digits += {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
  }
  return digits;
}

Client::Client(const std::string& name, int radio, const std::string& bridge)
    : host_(name), interface_(host_.TakeRadio(radio)) {
  Words words = {"wpa_supplicant", "-t", "-Dnl80211", "-i", interface_};
  if (!bridge.empty()) {
    host_.MakeBridge(bridge);
    OutputOf(host_.Inside({"iw", "dev", interface_, "set", "4addr", "on"}));
    host_.Join(bridge, interface_);
    words = words + Words{"-b", bridge};
  }
  const std::string config = directory_ / "wpa_supplicant.conf";
  WriteFile(config, "ctrl_interface=" + directory_ / "control" +
                        "\nupdate_config=1\np2p_disabled=1\nconfig_methods=virtual_push_button\n");
  supplicant_ = std::make_unique<EndToEnd::Process>(Logged(name, host_.Inside(words + Words{"-c", config})));
  control_ = std::make_unique<ControlSocket>(directory_ / "control/" + interface_);
  control_->Do("SCAN_INTERVAL 1");
}

void Client::BeginToJoin(const KnownNetwork& network) {
  control_->Do("REMOVE_NETWORK all");
  control_->ForgetEvents();
  if (const std::string id = control_->Ask("ADD_NETWORK"); id != "0\n") {
    throw std::runtime_error("an unknown network number: " + id);
  }
  const auto set = [&](const std::string& assignment) { control_->Do("SET_NETWORK 0 " + assignment); };
  set("ssid " + Hexadecimal(network.ssid));
  set("scan_ssid 1");
  set("key_mgmt " + network.keyManagement);
  // SAE takes its secret from here too.
  set("psk \"" + network.passphrase + "\"");
  set(network.keyManagement == "WPA-PSK" ? "ieee80211w 1" : "ieee80211w 2");
  set("scan_freq " + std::to_string(network.frequency));
  control_->Do("SELECT_NETWORK 0");
}

void Client::Join(const KnownNetwork& network) {
  BeginToJoin(network);
  ExpectConnected();
}

void Client::ExpectConnected() { control_->WaitFor({"CTRL-EVENT-CONNECTED"}); }

// A hostapd that has little time answers an association that was asked for twice twice, and begins the key
// handshake anew with the second answer. A client that had finished the first waits for the end of that for
// ever, and its phone gives up on it.
void Client::ExpectConnectedInTheEnd() {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::seconds kLongestHandshake(10);
  Clock::time_point without = Clock::now();
  try {
    WaitUntil(host_.Name() + " is connected", [&] {
      const std::string state = Status("wpa_state");
      if (state != "4WAY_HANDSHAKE") {
        without = Clock::now();
      } else if (Clock::now() - without > kLongestHandshake) {
        control_->Do("REASSOCIATE");
        without = Clock::now();
      }
      return state == "COMPLETED";
    });
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(std::string(error.what()) + ", but:\n" + control_->Ask("STATUS"));
  }
}

std::string Client::ExpectRefused() {
  const std::string event = control_->WaitFor({"CTRL-EVENT-CONNECTED", "CTRL-EVENT-AUTH-REJECT",
                                               "CTRL-EVENT-ASSOC-REJECT", "CTRL-EVENT-SSID-TEMP-DISABLED"});
  if (event.starts_with("CTRL-EVENT-CONNECTED")) {
    throw std::runtime_error("not refused: " + event);
  }
  return event;
}

void Client::ExpectDisconnected() { control_->WaitFor({"CTRL-EVENT-DISCONNECTED"}); }

void Client::Leave() {
  control_->ForgetEvents();
  control_->Do("DISCONNECT");
  ExpectDisconnected();
}

void Client::BeginToRejoin() {
  control_->ForgetEvents();
  control_->Do("RECONNECT");
}

void Client::PushButton() {
  control_->ForgetEvents();
  control_->Do("WPS_PBC");
}

bool Client::IsConnected() { return Status("wpa_state") == "COMPLETED"; }

std::string Client::Status(const std::string& key) { return LineOf(control_->Ask("STATUS"), key + "="); }

bool Client::KeepsSecret() {
  const std::string cache = control_->Ask("PMKSA");
  return cache.find("\n1 ") != std::string::npos;
}

std::string Client::ConnectedSince() const {
  const std::string since = LineOf(OutputOf(host_.Inside({"iw", "dev", interface_, "station", "dump"})),
                                   "\tassociated at [boottime]:");
  if (since.empty()) {
    throw std::runtime_error(interface_ + " is not connected");
  }
  return since;
}

bool Client::Hears(const std::string& ssid, int frequency) {
  control_->Do("BSS_FLUSH 0");
  control_->ForgetEvents();
  control_->Do("SCAN TYPE=ONLY freq=" + std::to_string(frequency));
  control_->WaitFor({"CTRL-EVENT-SCAN-RESULTS"});
  return control_->Ask("SCAN_RESULTS").find("\t" + ssid + "\n") != std::string::npos;
}

}  // namespace TALO::Hwsim
