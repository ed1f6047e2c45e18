#include "client/json_serializer.h"

#include "client/bytes.h"
#include "client/record_members.h"
#include "values/enum_names.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace TALO::Wifi::Daemon {

namespace {

Json::Value ToJson(bool value) { return value; }
Json::Value ToJson(int value) { return value; }
Json::Value ToJson(const std::string& text) { return ToReadableText(text); }
Json::Value ToJson(const Util::MACAddress& address) { return address.ToString(); }

template <Util::NamedEnum E>
Json::Value ToJson(E value) {
  const std::string_view name = Util::FindEnumName(value);
  if (name.empty()) {
    return static_cast<int>(value);
  }
  return std::string(name);
}

template <typename T>
std::string KeyOf(const T& value) {
  return ToJson(value).asString();
}

template <Record T>
Json::Value ToJson(const T& record);

template <typename T>
requires IMPL::IsContainer<T>::value Json::Value ToJson(const T& container) {
  Json::Value array(Json::arrayValue);
  for (const auto& element : container) {
    array.append(ToJson(element));
  }
  return array;
}

template <typename Key, typename T>
Json::Value ToJson(const std::map<Key, T>& map) {
  Json::Value object(Json::objectValue);
  for (const auto& [key, value] : map) {
    object[KeyOf(key)] = ToJson(value);
  }
  return object;
}

template <Record T>
Json::Value ToJson(const T& record) {
  Json::Value object(Json::objectValue);
  ForEachMember(record, [&object](auto member, const auto& value) {
    // The library does not copy keys that it is told will stay.
    object[Json::StaticString(member.name)] = ToJson(value);
    if constexpr (member.kind == TextKind::Bytes) {
      object[std::string(member.name) + "Hex"] = ToHex(value);
    }
  });
  return object;
}

}  // namespace

template <typename T>
std::enable_if_t<!IMPL::IsContainer<std::decay_t<T>>::value, Json::Value> JsonSerializer::Serialize(
    const T& record) {
  return ToJson(record);
}

#define INSTANTIATE(T) template TALO_WIFI_API Json::Value JsonSerializer::Serialize<T>(const T&);

INSTANTIATE(NetworkSetting)
INSTANTIATE(RadioSetting)
INSTANTIATE(RadioStatus)
INSTANTIATE(RadioStatusSimple)
INSTANTIATE(RadioIfStatus)
INSTANTIATE(RadioConversionInfo)
INSTANTIATE(StationSetting)
INSTANTIATE(StationStatus)
INSTANTIATE(ScanResult)
INSTANTIATE(BackhaulSetting)
INSTANTIATE(BackhaulSTASetting)
INSTANTIATE(BackhaulSTAStatus)
INSTANTIATE(MACFilterGlobal)
INSTANTIATE(MACFilterProfile)
INSTANTIATE(DeviceInfo)
INSTANTIATE(CountryCodeCapability)

#undef INSTANTIATE

}  // namespace TALO::Wifi::Daemon
