#include "values/enum_names.h"

#include "values/errors.h"

#include <magic_enum/magic_enum.hpp>

#include <algorithm>
#include <type_traits>
#include <typeinfo>

// Tight ranges: a value outside them would vanish from the names without a word, and wider ones cost compile
// time. The counts below fail the build when an enumeration and its range drift apart.
template <typename E, int Min, int Max>
struct TightRange {
  static constexpr int min = Min;
  static constexpr int max = Max;
};

namespace magic_enum::customize {
using namespace TALO::Wifi;        // NOLINT(google-build-using-namespace): names of the specialisations below
using namespace TALO::Wifi::Util;  // NOLINT(google-build-using-namespace)

template <>
struct enum_range<RadioFrequency> : TightRange<RadioFrequency, -1, 4> {};
template <>
struct enum_range<SecurityMode> : TightRange<SecurityMode, -1, 11> {};
template <>
struct enum_range<ScanType> : TightRange<ScanType, -1, 2> {};
template <>
struct enum_range<MACFilterAction> : TightRange<MACFilterAction, -1, 1> {};
template <>
struct enum_range<SupportedModel> : TightRange<SupportedModel, -1, 3> {};
template <>
struct enum_range<ScheduleMode> : TightRange<ScheduleMode, -1, 1> {};
template <>
struct enum_range<LogLevel> : TightRange<LogLevel, 0, 3> {};
template <>
struct enum_range<CountryCode> : TightRange<CountryCode, 0, 197> {};
}  // namespace magic_enum::customize

namespace TALO::Wifi::Util {

static_assert(magic_enum::enum_count<RadioFrequency>() == 6);
static_assert(magic_enum::enum_count<SecurityMode>() == 13);
static_assert(magic_enum::enum_count<ScanType>() == 4);
static_assert(magic_enum::enum_count<MACFilterAction>() == 3);
static_assert(magic_enum::enum_count<SupportedModel>() == 5);
static_assert(magic_enum::enum_count<ScheduleMode>() == 3);
static_assert(magic_enum::enum_count<LogLevel>() == 4);
static_assert(magic_enum::enum_count<CountryCode>() == 198);

template <NamedEnum E>
E EnumFromName(const std::string& name) {
  // Not magic_enum::enum_cast: for long enumerations that hashes, and an exact scan is all a one-word look-up
  // needs.
  const auto& names = magic_enum::enum_names<E>();
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) {
    throw RuntimeError("Failed to convert string to enum class [%s]: %s", typeid(E).name(), name.c_str());
  }
  return magic_enum::enum_value<E>(static_cast<std::size_t>(found - names.begin()));
}

template <NamedEnum E>
std::string_view FindEnumName(E value) noexcept {
  return magic_enum::enum_name(value);
}

template <NamedEnum E>
std::string EnumNameOf(E value) {
  const std::string_view name = FindEnumName(value);
  if (name.empty()) {
    throw RuntimeError("Failed to Convert enum class [%s] to string: %d", typeid(E).name(),
                       static_cast<std::underlying_type_t<E>>(value));
  }
  return std::string(name);
}

template <NamedEnum E>
std::vector<std::string> EnumWords() {
  std::vector<std::string> words;
  for (const auto& [value, name] : magic_enum::enum_entries<E>()) {
    bool means = static_cast<std::underlying_type_t<E>>(value) >= 0;
    if constexpr (std::is_same_v<E, CountryCode>) {
      means = value != CountryCode::MaxCountryCode;
    }
    if (means) {
      words.emplace_back(name);
    }
  }
  return words;
}

#define INSTANTIATE_NAMES(E)                             \
  template E EnumFromName<E>(const std::string&);        \
  template std::string EnumNameOf<E>(E);                 \
  template std::string_view FindEnumName<E>(E) noexcept; \
  template std::vector<std::string> EnumWords<E>();

INSTANTIATE_NAMES(RadioFrequency)
INSTANTIATE_NAMES(SecurityMode)
INSTANTIATE_NAMES(ScanType)
INSTANTIATE_NAMES(MACFilterAction)
INSTANTIATE_NAMES(SupportedModel)
INSTANTIATE_NAMES(ScheduleMode)
INSTANTIATE_NAMES(LogLevel)
INSTANTIATE_NAMES(CountryCode)

#undef INSTANTIATE_NAMES

}  // namespace TALO::Wifi::Util
