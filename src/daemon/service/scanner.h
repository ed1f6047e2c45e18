#pragma once

#include "client/station_records.h"
#include "daemon/service/engine.h"

#include <functional>
#include <vector>

namespace TALO::Wifid {

using ScanDone = Engine::Done<std::vector<Wifi::ScanResult>>;

/// Listens on the radios that `asked` means, each when its turn has come, and answers when all have: the
/// results radio by radio, or the first refusal.
void Scan(Engine& engine, RadioFrequency asked, const ScanDone& done);

/// Drops and rejoins the upstream connections of every radio; answers when all were told.
void ReconnectAll(Engine& engine, const Engine::Done<void>& done);

}  // namespace TALO::Wifid
