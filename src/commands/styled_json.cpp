#include "commands/styled_json.h"

#include "client/json_serializer.h"

#include <json/value.h>
#include <json/writer.h>

#include <memory>
#include <ostream>

namespace TALO::Tool {

namespace {

using Wifi::Daemon::JsonSerializer;

template <typename Record>
Json::Value valueOf(const Record& record) {
  return JsonSerializer::Serialize<Record>(record);
}

template <typename Record>
Json::Value valueOf(const std::vector<Record>& records) {
  Json::Value array(Json::arrayValue);
  for (const Record& record : records) {
    array.append(JsonSerializer::Serialize<Record>(record));
  }
  return array;
}

}  // namespace

void writeStyledJSON(Printable what, std::ostream& output) {
  const Json::Value value = std::visit([](const auto* printed) { return valueOf(*printed); }, what);
  const std::unique_ptr<Json::StreamWriter> writer(Json::StreamWriterBuilder().newStreamWriter());
  writer->write(value, &output);
  output << '\n';
}

}  // namespace TALO::Tool
