#include "daemon/store/state_codec.h"

#include "daemon/json/record_json.h"
#include "daemon/model/state_description.h"
#include "daemon/store/checksum.h"
#include "daemon/store/state_upgrade.h"

#include <cstdint>

namespace TALO::Wifid {

namespace {

constexpr const char* kVersionKey = "version";

/// Takes the version out of the object.
std::int64_t TakeVersion(Json::Value& root) {
  Json::Value version;
  if (!root.isObject() || !root.removeMember(kVersionKey, &version) || version.type() != Json::intValue) {
    throw FormError("it has no version");
  }
  return version.asInt64();
}

void CheckChecksum(Json::Value& root, const std::string& text) {
  Json::Value checksum;
  if (root.removeMember(kChecksumKey, &checksum) &&
      !FitsChecksum(text, RecordJson::DecodeText(checksum, kChecksumKey))) {
    throw FormError("it does not fit its checksum");
  }
}

}  // namespace

std::string EncodeState(const State& state) {
  Json::Value root = EncodeRecord(state);
  root[kVersionKey] = kStateVersion;
  root[kChecksumKey] = kNoChecksum;
  std::string text = root.toStyledString();
  PutChecksum(text);
  return text;
}

Result<State> DecodeState(const std::string& text) {
  try {
    Json::Value root = ParseJson(text);
    const std::int64_t version = TakeVersion(root);
    if (version < 1 || version > kStateVersion) {
      return Refusal{version < 1 ? ErrorCode::StorageFailed : ErrorCode::NotSupported,
                     "it is of version " + std::to_string(version) +
                         ", this daemon knows the versions 1 to " + std::to_string(kStateVersion)};
    }
    CheckChecksum(root, text);
    UpgradeState(root, static_cast<int>(version));
    return DecodeRecord<State, RecordForm::Exact>(root);
  } catch (const FormError& error) {
    return Refusal{ErrorCode::StorageFailed, error.what()};
  }
}

}  // namespace TALO::Wifid
