#pragma once

// Walking through a record's members, over the lists of record_descriptions.h. Not installed.

#include "client/record_descriptions.h"

#include <boost/hana/accessors.hpp>
#include <boost/hana/concept/struct.hpp>
#include <boost/hana/first.hpp>
#include <boost/hana/fold_left.hpp>
#include <boost/hana/for_each.hpp>
#include <boost/hana/second.hpp>
#include <boost/hana/string.hpp>

#include <type_traits>

namespace TALO::Wifi {

/// A type whose members are listed.
template <typename T>
concept Record = boost::hana::Struct<T>::value;

/// What is known of a member while compiling.
template <typename Key, typename T>
struct Member {
  using Type = T;
  static constexpr const char* name = boost::hana::to<const char*>(Key{});
  static constexpr TextKind kind = std::is_same_v<T, std::string> ? TextKindOf(name) : TextKind::Text;
};

template <typename Accessor, typename Owner>
using MemberOf = Member<
    std::remove_cvref_t<decltype(boost::hana::first(std::declval<Accessor>()))>,
    std::remove_cvref_t<decltype(boost::hana::second(std::declval<Accessor>())(std::declval<Owner&>()))>>;

/// Calls `visit` with the Member and a reference to the value of each of the record's members, in order.
template <typename RecordOrConst, typename Visit>
requires Record<std::remove_const_t<RecordOrConst>>
constexpr void ForEachMember(RecordOrConst& record, Visit visit) {
  boost::hana::for_each(
      boost::hana::accessors<std::remove_const_t<RecordOrConst>>(), [&](const auto& accessor) {
        visit(MemberOf<decltype(accessor), RecordOrConst>{}, boost::hana::second(accessor)(record));
      });
}

/// Folds over the members' Member types alone, as `fold(state, Member)`.
template <Record T, typename State, typename Fold>
constexpr auto FoldMembers(State state, Fold fold) {
  return boost::hana::fold_left(boost::hana::accessors<T>(), state, [fold](auto sum, const auto& accessor) {
    return fold(sum, MemberOf<decltype(accessor), T>{});
  });
}

}  // namespace TALO::Wifi
