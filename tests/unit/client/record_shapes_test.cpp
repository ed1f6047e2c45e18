#include "client/record_members.h"
#include "client/records.h"
#include "values/mac_address.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

// The members of the records as programs compiled against them know them.

namespace TALO::Wifi {

namespace {

/// One or more members in a row that own no storage: numbers, flags and enumerations.
struct Plain {};

template <typename... Members>
struct Shape {};

/// Takes runs of plain members together.
struct AddMember {
  template <typename... Before, typename M>
  constexpr auto operator()(Shape<Before...>, M) const {
    using Type = typename M::Type;
    using Last = decltype((std::type_identity<Before>{}, ...));
    if constexpr (!std::is_arithmetic_v<Type> && !std::is_enum_v<Type>) {
      return Shape<Before..., Type>{};
    } else if constexpr (std::is_same_v<Last, std::type_identity<Plain>>) {
      return Shape<Before...>{};
    } else {
      return Shape<Before..., Plain>{};
    }
  }
};

template <Record T>
using ShapeOf = decltype(FoldMembers<T>(Shape<>{}, AddMember{}));

using Text = std::string;
using Texts = std::vector<std::string>;
using Radios = std::set<Util::RadioFrequency>;

static_assert(sizeof(Util::RadioFrequency) == sizeof(std::int32_t));

static_assert(std::is_same_v<ShapeOf<NetworkSetting>,
                             Shape<Plain, Text, Text, Plain, Text, Text, Plain, Text, Text, Plain, Text,
                                   Texts, Plain, std::vector<NetworkRadioSetting>>>);
static_assert(
    std::is_same_v<ShapeOf<NetworkRadioSetting>, Shape<Plain, Text, Text, Text, Text, Text, Text, Texts>>);
static_assert(std::is_same_v<ShapeOf<RadioSetting>, Shape<Plain>>);
static_assert(std::is_same_v<ShapeOf<RadioStatus>, Shape<Plain, Util::MACAddress, Texts>>);
static_assert(std::is_same_v<ShapeOf<RadioStatusSimple>, ShapeOf<RadioStatus>>);
static_assert(std::is_same_v<ShapeOf<RadioIfStatus>, Shape<Plain, Text, Texts>>);
static_assert(std::is_same_v<decltype(RadioIfStatus::radio), Util::RadioFrequency>);
static_assert(
    std::is_same_v<ShapeOf<StationSetting>, Shape<Plain, Text, Text, Text, Util::MACAddress, Plain>>);
static_assert(std::is_same_v<ShapeOf<BackhaulSetting>, Shape<Plain, Text, Text, Radios>>);
static_assert(std::is_same_v<ShapeOf<BackhaulSTASetting>, ShapeOf<BackhaulSetting>>);
static_assert(std::is_same_v<ShapeOf<MACFilterDevice>, Shape<Text, Util::MACAddress>>);
static_assert(
    std::is_same_v<ShapeOf<MACFilterProfile>, Shape<Plain, Text, Plain, std::vector<MACFilterDevice>>>);
static_assert(std::is_same_v<ShapeOf<WPS_ERConfigInput>, Shape<Text, Text, Text, Text>>);

template <typename T>
class RecordDescription : public testing::Test {
  static_assert(std::regular<T>);
};

using Records =
    testing::Types<NetworkCreateInfo, NetworkRadioSetting, NetworkSetting, NetworkRadioPair, RadioSetting,
                   RadioStatus, RadioStatusSimple, RadioIfStatus, RadioConversionInfo, ScanResult,
                   StationSetting, StationStatus, BackhaulConfig, BackhaulSetting, BackhaulSTASetting,
                   BackhaulSTAStatus, MeshInfo, MACFilterDevice, MACFilterGlobal, MACFilterProfile,
                   ScheduleStatusEntry, WPS_ERConfigInput, DeviceInfo, CountryCodeCapability, ActivationInfo>;
TYPED_TEST_SUITE(RecordDescription, Records);

std::size_t RoundedUp(std::size_t offset, std::size_t alignment) {
  return (offset + alignment - 1) / alignment * alignment;
}

TYPED_TEST(RecordDescription, ListsEveryMemberInTheOrderOfDeclaration) {
  const TypeParam record;
  const auto* const start = reinterpret_cast<const std::byte*>(&record);
  std::size_t end = 0;
  ForEachMember(record, [&](auto member, const auto& value) {
    using Type = std::remove_cvref_t<decltype(value)>;
    const auto offset = static_cast<std::size_t>(reinterpret_cast<const std::byte*>(&value) - start);
    // Where the compiler puts what follows the member before.
    EXPECT_EQ(offset, RoundedUp(end, alignof(Type))) << member.name;
    end = offset + sizeof(Type);
  });
  EXPECT_EQ(RoundedUp(end, alignof(TypeParam)), sizeof(TypeParam));
}

}  // namespace

}  // namespace TALO::Wifi
