#include "daemon/service/service.h"

#include <string>

namespace TALO::Wifid {

using Wifi::WifiClient;
using Wifi::WifiClientForTool;
using Wifi::Util::LogLevel;

namespace {

/// A handler that answers at once with a view of the state and the air.
template <typename View>
auto AnswerWith(Engine& engine, View view) {
  return [&engine, view](auto respond) { respond(engine.Ask(view)); };
}

}  // namespace

Service::Service(Engine& engine, Log& log) : engine_(engine), log_(log), logControl_(log) {
  HandleNetworks();
  HandleRadios();
  HandleLogLevel();
}

void Service::Attach(sd_bus* bus) {
  general_.Attach(bus);
  mesh_.Attach(bus);
  topology_.Attach(bus);
  tool_.Attach(bus);
  logControl_.Attach(bus);
}

void Service::HandleNetworks() {
  general_.Handle<&WifiClient::GetNetworkSettings>(AnswerWith(engine_, NetworkSettings));
  general_.Handle<&WifiClient::GetNetworkInterfaces>(AnswerWith(engine_, NetworkInterfaces));
  general_.Handle<&WifiClient::IsAllNetworkAPDisabled>(AnswerWith(engine_, IsAllNetworkAPDisabled));
  general_.Handle<&WifiClient::CreateNetwork>(
      [this](const auto& info, auto respond) { engine_.CreateNetwork(info, respond); });
  general_.Handle<&WifiClient::DeleteNetwork>(
      [this](int networkId, auto respond) { engine_.DeleteNetwork(networkId, respond); });
  tool_.Handle<&WifiClientForTool::RestartNetworks>(
      [this](bool force, auto respond) { engine_.RestartNetworks(force, respond); });
}

void Service::HandleRadios() {
  general_.Handle<&WifiClient::GetRadioSettings>(AnswerWith(engine_, RadioSettings));
  general_.Handle<&WifiClient::GetRadioStatuses>(AnswerWith(engine_, RadioStatuses));
  general_.Handle<&WifiClient::GetRadioStatusesSimple>(AnswerWith(engine_, RadioStatusesSimple));
  general_.Handle<&WifiClient::GetRadioIfStatuses>(AnswerWith(engine_, RadioIfStatuses));
  general_.Handle<&WifiClient::GetNetworkInterfaceRadioMap>(AnswerWith(engine_, InterfaceRadioMap));
  general_.Handle<&WifiClient::GetRadioConversionInfo>(AnswerWith(engine_, ConversionInfo));
}

void Service::HandleLogLevel() {
  tool_.Handle<&WifiClientForTool::SetLogLevel>([this](LogLevel level, auto respond) {
    const auto severity = SeverityOf(level);
    if (!severity) {
      respond(Refusal{ErrorCode::InvalidArgument,
                      "the log level " + std::to_string(static_cast<int>(level)) + " does not exist"});
      return;
    }
    log_.SetLevel(*severity);
    respond({});
  });
}

}  // namespace TALO::Wifid
