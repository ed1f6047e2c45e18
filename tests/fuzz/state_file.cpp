// Any state file, and behind a zero byte any that was kept of before the last change; "-" is none. What is
// read is written and read again; nothing that could be read is lost, and what could not is put aside.

#include "daemon/store/state_file.h"

#include "daemon/main/stored_state.h"
#include "daemon/model/first_state.h"
#include "daemon/model/schedules.h"
#include "daemon/model/state_check.h"
#include "daemon/model/views.h"
#include "daemon/service/log.h"
#include "daemon/store/state_codec.h"
#include "fuzz/support/require.h"
#include "fuzz/support/two_texts.h"
#include "support/daemon_samples.h"
#include "support/simulated_disk.h"
#include "support/zone_calendar.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace TALO::Fuzz {

namespace {

using Wifid::Capabilities;
using Wifid::Result;
using Wifid::SimulatedDisk;
using Wifid::State;
using Wifid::StateFile;

/// What a text stands for, if the daemon may have written it.
std::optional<State> Sound(const std::string& text) {
  const Result<State> decoded = Wifid::DecodeState(text);
  if (!decoded.Succeeded()) {
    Require(!decoded.Why().sentence.empty(), "a refusal says why");
    return std::nullopt;
  }
  const std::string written = Wifid::EncodeState(decoded.Value());
  const Result<State> again = Wifid::DecodeState(written);
  Require(again.Succeeded() && again.Value() == decoded.Value(), "a state that was read is read again");
  Require(Wifid::EncodeState(again.Value()) == written, "a state is always written the same");
  if (!Wifid::CheckState(decoded.Value()).Succeeded()) {
    return std::nullopt;
  }
  return decoded.Value();
}

bool IsOfNewerVersion(const std::string& text) {
  const Result<State> decoded = Wifid::DecodeState(text);
  return !decoded.Succeeded() && decoded.Why().code == Wifi::ErrorCode::NotSupported;
}

/// What callers are shown of it, on a router of these radios.
void Show(const State& stored, const Capabilities& capabilities) {
  const State state = Wifid::AdaptToRadios(stored, capabilities);
  Require(Wifid::CheckState(state).Succeeded(), "a state is one on other radios");
  const Wifid::ZoneCalendar calendar = Wifid::Berlin2026();
  const std::int64_t now = Wifid::UTC(2026, 3, 28, 12);
  const auto off = Wifid::ScheduledOff(state, now, calendar);
  const auto next = Wifid::NextSwitchOfAll(state, now, calendar);
  Require(!next || *next > now, "the next switch is to come");
  Wifid::ScheduleStatusOf(state, now, calendar);
  const auto plan = Wifid::MakePlan(state, capabilities, off);
  Require(plan.size() == capabilities.radios.size(), "every radio has a plan");
  const auto live = Wifid::LiveAsPlanned(plan);
  const Wifid::Picture picture{state, capabilities, live};
  Require(Wifid::NetworkSettings(picture).size() == state.networks.size(), "every network is shown");
  Require(Wifid::NetworkInterfaces(picture).size() == state.networks.size(), "every network has its entry");
  Require(Wifid::RadioSettings(picture).size() == capabilities.radios.size(), "every radio is shown");
  Wifid::RadioIfStatuses(picture);
  Wifid::RadioStatuses(picture);
  Wifid::InterfaceRadioMap(picture);
  Wifid::ConversionInfo(picture);
  Wifid::StationStatuses(picture);
  Wifid::StationInterfaces(picture);
  Wifid::BackhaulSettingOf(picture);
  Wifid::BackhaulSTASettingOf(picture);
  Wifid::BackhaulSTAStatuses(picture);
}

bool Holds(const SimulatedDisk& disk, const std::string& text) {
  return std::ranges::any_of(disk.Now(), [&text](const auto& file) { return file.second == text; });
}

/// A file, or none.
using Found = std::optional<std::string>;

void LoadAndSave(const Found& current, const Found& last) {
  SimulatedDisk::Files found;
  if (current) {
    found["state.json"] = *current;
  }
  if (last) {
    found["state.json.last"] = *last;
  }
  SimulatedDisk disk(found);
  StateFile file(disk, "state");
  const auto loaded = file.Load();
  const auto inForce = current ? Sound(*current) : std::nullopt;
  const auto before = last ? Sound(*last) : std::nullopt;
  const bool isNewer =
      (current && IsOfNewerVersion(*current)) || (!inForce && last && IsOfNewerVersion(*last));
  Require(loaded.Succeeded() == !isNewer, "a newer version, and nothing else, keeps a state from being read");
  if (isNewer) {
    Require(disk.Now() == found, "the files are left as they are");
    return;
  }
  const auto wanted = inForce ? inForce : before;
  Require(loaded.Value().state == wanted, "the state in force is found, else the one before it");
  Require(loaded.Value().trouble.empty() == (inForce || (!current && !last)), "what is lost is said");

  const State next = wanted ? *wanted : Wifid::MakeState(1, {});
  Require(file.Save(next).Succeeded(), "a disk that works takes a state");
  Require(!current || inForce || Holds(disk, *current), "what could not be read is kept");
  Require(!last || inForce || before || Holds(disk, *last), "so is what was kept before it");
  StateFile after(disk, "state");
  const auto again = after.Load();
  Require(again.Succeeded() && again.Value().state == next, "what was saved is found");
}

/// An input may say that there is no file.
Found AsFile(const std::string& text) { return text == "-" ? std::nullopt : Found(text); }

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  const Fuzz::TwoTexts files(data, size);
  if (const auto state = Fuzz::Sound(files.first)) {
    Fuzz::Show(*state, TALO::Wifid::TriBandRadios());
    Fuzz::Show(*state, TALO::Wifid::DualBandRadios());
  }
  Fuzz::LoadAndSave(Fuzz::AsFile(files.first), Fuzz::AsFile(files.second));
  return 0;
}
