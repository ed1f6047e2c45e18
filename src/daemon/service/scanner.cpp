#include "daemon/service/scanner.h"

#include "daemon/model/radios.h"

#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace TALO::Wifid {

namespace {

struct Listening {
  std::size_t waitingFor = 0;
  std::map<RadioFrequency, std::vector<Wifi::ScanResult>> heard;
  std::optional<Refusal> refusal;
};

void Answer(const Listening& listening, const ScanDone& done) {
  if (listening.refusal) {
    done(*listening.refusal);
    return;
  }
  std::vector<Wifi::ScanResult> all;
  for (const auto& [radio, results] : listening.heard) {
    all.insert(all.end(), results.begin(), results.end());
  }
  done(std::move(all));
}

}  // namespace

void Scan(Engine& engine, RadioFrequency asked, const ScanDone& done) {
  const auto radios = ResolveRadios(engine.GetState(), engine.GetCapabilities(), asked);
  if (!radios.Succeeded()) {
    done(radios.Why());
    return;
  }
  const auto listening = std::make_shared<Listening>();
  listening->waitingFor = radios.Value().size();
  if (radios.Value().empty()) {
    Answer(*listening, done);
    return;
  }
  for (const RadioFrequency radio : radios.Value()) {
    engine.Use(radio, [&engine, radio, listening, done](const std::function<void()>& leave) {
      if (!done.IsAwaited()) {
        leave();
        return;
      }
      engine.GetDoors().driver.Scan(radio, [radio, listening, done, leave](const auto& results) {
        leave();
        if (results.Succeeded()) {
          listening->heard[radio] = results.Value();
        } else if (!listening->refusal) {
          listening->refusal = results.Why();
        }
        if (--listening->waitingFor == 0) {
          Answer(*listening, done);
        }
      });
    });
  }
}

void ReconnectAll(Engine& engine, const Engine::Done<void>& done) {
  struct Progress {
    std::size_t waitingFor = 0;
    Result<void> outcome;
  };
  const auto progress = std::make_shared<Progress>();
  const auto radios = engine.AllRadios();
  progress->waitingFor = radios.size();
  if (radios.empty()) {
    done({});
    return;
  }
  for (const RadioFrequency radio : radios) {
    engine.Use(radio, [&engine, radio, progress, done](const std::function<void()>& leave) {
      if (!done.IsAwaited()) {
        leave();
        return;
      }
      engine.GetDoors().driver.Reconnect(radio, [progress, done, leave](const Result<void>& result) {
        leave();
        if (!result.Succeeded() && progress->outcome.Succeeded()) {
          progress->outcome = result;
        }
        if (--progress->waitingFor == 0) {
          done(progress->outcome);
        }
      });
    });
  }
}

}  // namespace TALO::Wifid
