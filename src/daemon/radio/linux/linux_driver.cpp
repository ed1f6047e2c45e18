#include "daemon/radio/linux/linux_driver.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/hardware.h"
#include "daemon/radio/linux/questions.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace TALO::Wifid {

namespace {

Program::Setting HostapdSetting(const LinuxSetup& setup, const PrivateFiles& files) {
  const std::string socket = files.PathOf("hostapd");
  return {"hostapd", {setup.hostapd, {"-g", socket}}, socket};
}

Program::Setting SupplicantSetting(const LinuxSetup& setup, const PrivateFiles& files) {
  const std::string socket = files.PathOf("wpa_supplicant");
  return {"wpa_supplicant", {setup.supplicant, {"-g", socket}}, socket};
}

template <typename T>
T Require(Result<T> result) {
  if (!result.Succeeded()) {
    throw std::runtime_error(result.Why().sentence);
  }
  return std::move(result.Value());
}

/// Whether the driver makes interfaces of this name beside the radio's own.
bool IsMadeBy(const RadioCapability& radio, const std::string& name) {
  return name != radio.interface && name.starts_with(radio.interface) &&
         (name[radio.interface.size()] == '_' || name == radio.interface + "sta" ||
          name == radio.interface + "bhs" || name == radio.interface + "lsn");
}

}  // namespace

LinuxDriver::LinuxDriver(const LinuxSetup& setup, const LinuxDoors& doors)
    : doors_(doors),
      timers_(doors_.timers),
      hostapd_(HostapdSetting(setup, doors_.files), doors_, HostapdSinks()),
      supplicant_(SupplicantSetting(setup, doors_.files), doors_, SupplicantSinks()),
      country_(doors_.kernel, doors_.timers),
      wps_(hostapd_, doors_.timers, [this](const RadioEvent& event) { Tell(event); }) {
  TakeHardware(setup);
  CleanUp();
  hostapd_.Start();
  supplicant_.Start();
}

LinuxDriver::~LinuxDriver() {
  // hostapd takes its interfaces with it.
  CleanUp();
}

void LinuxDriver::TakeHardware(const LinuxSetup& setup) {
  capabilities_.model = setup.model;
  const RadioMap map = Require(ReadRadioMap(setup.radios, setup.model));
  for (RadioHardware& hardware :
       Require(AssignHardware(setup.model, doors_.kernel.GetWiphys(), doors_.kernel.GetInterfaces(), map))) {
    const RadioCapability capability = hardware.capability;
    if (hardware.makesInterface) {
      made_.insert(capability.interface);
    }
    capabilities_.radios.push_back(capability);
    const LinuxRadio::Shared shared{doors_,
                                    hostapd_,
                                    supplicant_,
                                    country_,
                                    secrets_,
                                    [this](const RadioEvent& event) { Tell(event); },
                                    [this](const std::string& interface) { wps_.BSSWentDown(interface); }};
    radios_.push_back(
        std::make_unique<LinuxRadio>(RadioSetting{std::move(hardware), doors_.files.PathOf(""),
                                                  doors_.files.PathOf("interfaces"), setup.bridge},
                                     shared));
  }
}

void LinuxDriver::Tell(const RadioEvent& event) {
  Later([this, event] {
    if (sink_) {
      sink_(event);
    }
  });
}

void LinuxDriver::CleanUp() {
  for (const WirelessInterface& interface : HearFromKernel(doors_.kernel, &Kernel::GetInterfaces)) {
    for (const RadioCapability& radio : capabilities_.radios) {
      if (!IsMadeBy(radio, interface.name) && !made_.contains(interface.name)) {
        continue;
      }
      if (auto gone = doors_.kernel.DeleteInterface(interface.name); !gone.Succeeded()) {
        doors_.note({DriverNote::Weight::Warning, gone.Why().sentence});
      }
    }
  }
}

template <typename... Arguments>
void LinuxDriver::ToRadios(void (LinuxRadio::*call)(Arguments...),
                           std::type_identity_t<Arguments>... arguments) {
  for (const auto& radio : radios_) {
    (radio.get()->*call)(arguments...);
  }
}

Program::Sinks LinuxDriver::HostapdSinks() {
  return {.ready = [this] { ToRadios(&LinuxRadio::Restore); },
          .gone = [this] { ToRadios(&LinuxRadio::LoseHostapd); },
          .message =
              [this](const ControlMessage& message) {
                wps_.Take(message);
                ToRadios(&LinuxRadio::TakeFromHostapd, message);
              },
          .lookAgain = [this] { ToRadios(&LinuxRadio::LookForStations); },
          .hideSecrets = [this](const std::string& line) { return secrets_.Hide(line); }};
}

Program::Sinks LinuxDriver::SupplicantSinks() {
  return {.ready = [this] { ToRadios(&LinuxRadio::Restore); },
          .gone = [this] { ToRadios(&LinuxRadio::LoseSupplicant); },
          .message =
              [this](const ControlMessage& message) { ToRadios(&LinuxRadio::TakeFromSupplicant, message); },
          .lookAgain = [this] { ToRadios(&LinuxRadio::LookForUpstreams); },
          .hideSecrets = [this](const std::string& line) { return secrets_.Hide(line); }};
}

std::set<std::string> LinuxDriver::GetBridges() const {
  return HearFromKernel(doors_.kernel, &Kernel::GetBridges);
}

LinuxRadio* LinuxDriver::FindRadio(RadioFrequency radio) {
  const auto found =
      std::ranges::find(radios_, radio, [](const auto& each) { return each->GetCapability().radio; });
  return found != radios_.end() ? found->get() : nullptr;
}

LinuxRadio* LinuxDriver::Occupy(RadioFrequency frequency, const std::function<void(Refusal)>& refuse) {
  LinuxRadio* radio = FindRadio(frequency);
  if (radio == nullptr) {
    Later([refuse, frequency] {
      refuse({ErrorCode::RadioFailed, "this router has no radio " + NameOrNumber(frequency)});
    });
    return nullptr;
  }
  if (!busy_.insert(frequency).second) {
    Later([refuse, frequency] {
      refuse({ErrorCode::Busy, "the radio " + NameOrNumber(frequency) + " is busy with another operation"});
    });
    return nullptr;
  }
  return radio;
}

RadioDriver::Done LinuxDriver::Answering(Done done) {
  return
      [this, done = std::move(done)](const Result<void>& result) { Later([done, result] { done(result); }); };
}

void LinuxDriver::Apply(const RadioPlan& plan, ApplyMode mode, Done done) {
  if (LinuxRadio* radio = Occupy(plan.radio, done)) {
    radio->Apply(plan, mode, Answering([this, radio = plan.radio, done](const Result<void>& result) {
                   Release(radio);
                   done(result);
                 }));
  }
}

std::vector<LiveRadio> LinuxDriver::GetLive() const {
  std::vector<LiveRadio> live;
  for (const auto& radio : radios_) {
    live.push_back(radio->GetLive());
  }
  return live;
}

void LinuxDriver::Scan(RadioFrequency frequency, ScanDone done) {
  if (LinuxRadio* radio = Occupy(frequency, done)) {
    radio->Scan([this, frequency, done](const Result<std::vector<Wifi::ScanResult>>& results) {
      Later([this, frequency, done, results] {
        Release(frequency);
        done(results);
      });
    });
  }
}

void LinuxDriver::Reconnect(RadioFrequency frequency, Done done) {
  if (LinuxRadio* radio = Occupy(frequency, done)) {
    radio->Reconnect(Answering([this, frequency, done](const Result<void>& result) {
      Release(frequency);
      done(result);
    }));
  }
}

const BSSPlan* LinuxDriver::FindBSS(const std::string& interface) const {
  for (const auto& radio : radios_) {
    if (const BSSPlan* bss = radio->FindBSS(interface)) {
      return bss;
    }
  }
  return nullptr;
}

void LinuxDriver::StartWPS(const std::string& interface, Done done) {
  const BSSPlan* bss = FindBSS(interface);
  done = Answering(std::move(done));
  if (bss == nullptr) {
    done(Refusal{ErrorCode::RadioFailed, "the BSS " + interface + " is not up"});
  } else if (!HasWPS(*bss)) {
    done(Refusal{ErrorCode::NotSupported, "the BSS " + interface + " cannot use WPS " + WhyNoWPS(*bss)});
  } else {
    wps_.Open(interface, std::move(done));
  }
}

void LinuxDriver::CancelWPS(const std::string& interface, Done done) {
  wps_.Cancel(interface, Answering(std::move(done)));
}

void LinuxDriver::ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) {
  Later([input, done = std::move(done)] {
    done(Refusal{ErrorCode::NotSupported, "there is no registrar on " + input.ifName});
  });
}

}  // namespace TALO::Wifid
