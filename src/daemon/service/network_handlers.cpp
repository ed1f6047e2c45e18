#include "daemon/model/mac_filter.h"
#include "daemon/model/networks.h"
#include "daemon/model/passwords.h"
#include "daemon/model/schedules.h"
#include "daemon/model/text.h"
#include "daemon/service/handlers.h"
#include "daemon/service/service.h"

namespace TALO::Wifid {

using Wifi::WifiClient;
using Wifi::WifiClientForTool;

void Service::HandleNetworks() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::GetNetworkSettings>(AnswerWith(engine, NetworkSettings));
  general_.Handle<&WifiClient::GetNetworkSetting>([&engine](int networkId, auto respond) {
    const auto network = FindNetwork(engine.GetState(), networkId);
    if (!network.Succeeded()) {
      respond(network.Why());
      return;
    }
    respond(engine.Ask([&](const Picture& picture) { return NetworkSettingOf(picture, *network.Value()); }));
  });
  general_.Handle<&WifiClient::GetNetworkInterfaces>(AnswerWith(engine, NetworkInterfaces));
  general_.Handle<&WifiClient::IsAllNetworkAPDisabled>(AnswerWith(engine, IsAllNetworkAPDisabled));
  general_.Handle<&WifiClient::GetDevices>(AnswerWith(engine, ConnectedDevices));
  general_.Handle<&WifiClient::CreateNetwork>(
      [this, &engine](const Wifi::NetworkCreateInfo& info, auto respond) {
        engine.Make<int>(
            [this, &engine, info](const State& state) {
              return CreateNetwork(state, engine.GetCapabilities(), info, parts_.bridge,
                                   engine.GetDoors().clock.WallNow());
            },
            respond);
      });
  general_.Handle<&WifiClient::DeleteNetwork>(MakeWith(engine, DeleteNetwork));
  tool_.Handle<&WifiClientForTool::RestartNetworks>([&engine](bool force, auto respond) {
    engine.Restart(force ? ApplyMode::Everything : ApplyMode::WhatDiffers, respond);
  });
}

void Service::HandleMACFilters() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::GetMACFilterProfiles>(AnswerWithState(engine, &State::macFilterProfiles));
  general_.Handle<&WifiClient::CreateMACFilterProfile>([&engine](const Wifi::MACFilterProfile& profile,
                                                                 bool applyToAll, auto respond) {
    engine.Make<int>([profile, applyToAll](
                         const State& state) { return CreateMACFilterProfile(state, profile, applyToAll); },
                     respond);
  });
  general_.Handle<&WifiClient::ModifyMACFilterProfile>(MakeWith(engine, ModifyMACFilterProfile));
  general_.Handle<&WifiClient::DeleteMACFilterProfiles>(MakeWith(engine, DeleteMACFilterProfiles));
  general_.Handle<&WifiClient::AssignMACFilterProfile>([&engine](int networkId, int profileId, auto respond) {
    engine.Make<void>([networkId, profileId](
                          const State& state) { return AssignMACFilterProfile(state, networkId, profileId); },
                      respond);
  });
  general_.Handle<&WifiClient::GetMACFilterGlobal>(AnswerWithState(engine, &State::macFilterGlobal));
  general_.Handle<&WifiClient::SetMACFilterGlobal>(
      [&engine](const Wifi::MACFilterGlobal& global, auto respond) {
        engine.Make<void>(
            [&engine, global](const State& state) {
              return SetMACFilterGlobal(state, engine.GetCapabilities(), global);
            },
            respond);
      });
}

void Service::HandleSchedulesAndPasswords() {
  Engine& engine = parts_.engine;
  general_.Handle<&WifiClient::GetScheduleStatus>([&engine](auto respond) {
    const auto& doors = engine.GetDoors();
    respond(ScheduleStatusOf(engine.GetState(), doors.clock.WallNow(), doors.calendar));
  });
  general_.Handle<&WifiClient::SetSchedule>([this, &engine](const Wifi::NetworkSchedule& schedule,
                                                            auto respond) {
    engine.Make<void>(
        [&engine, schedule](const State& state) {
          return SetSchedule(state, engine.GetCapabilities(), schedule, engine.GetDoors().clock.WallNow());
        },
        Engine::Done<void>(
            [this, respond](const Result<void>& made) {
              parts_.schedules.Rearm();
              respond(made);
            },
            respond));
  });
  tool_.Handle<&WifiClientForTool::UpdateSchedule>([this](ScheduleMode mode, auto respond) {
    if (!IsReal(mode)) {
      respond(
          Refusal{ErrorCode::InvalidArgument, "the schedule mode " + NameOrNumber(mode) + " does not exist"});
      return;
    }
    // Schedules of the other mode are where the clock wants them anyway.
    parts_.engine.EvaluateSchedules([this, respond](const Result<void>& evaluated) {
      parts_.schedules.Rearm();
      respond(evaluated);
    });
  });
  tool_.Handle<&WifiClientForTool::RotatePassword>(
      [this, &engine](const Wifi::NetworkRadioPair& target, auto respond) {
        // Drawn before its turn has come: where there is no randomness this call fails, nothing behind it.
        const std::string passphrase =
            DrawPassphrase([this](std::size_t count) { return parts_.random.Draw(count); });
        engine.Make<void>(
            [&engine, target, passphrase](const State& state) {
              return RotatePassword(state, engine.GetCapabilities(), target, passphrase,
                                    engine.GetDoors().clock.WallNow());
            },
            respond);
      });
}

}  // namespace TALO::Wifid
