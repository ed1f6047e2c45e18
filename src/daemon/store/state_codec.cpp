#include "daemon/store/state_codec.h"

#include "daemon/json/record_json.h"
#include "daemon/model/state_description.h"

namespace TALO::Wifid {

namespace {

constexpr const char* kVersionKey = "version";

}  // namespace

std::string EncodeState(const State& state) {
  Json::Value root = EncodeRecord(state);
  root[kVersionKey] = kStateVersion;
  return root.toStyledString();
}

Result<State> DecodeState(const std::string& text) {
  try {
    Json::Value root = ParseJson(text);
    if (!root.isObject() || !root[kVersionKey].isInt()) {
      throw FormError("it has no version");
    }
    const int version = root[kVersionKey].asInt();
    if (version != kStateVersion) {
      throw FormError("it is of version " + std::to_string(version) + ", this daemon knows version " +
                      std::to_string(kStateVersion));
    }
    root.removeMember(kVersionKey);
    return DecodeRecord<State, RecordForm::Exact>(root);
  } catch (const FormError& error) {
    return Refusal{ErrorCode::StorageFailed, error.what()};
  }
}

}  // namespace TALO::Wifid
