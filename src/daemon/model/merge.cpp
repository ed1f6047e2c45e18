#include "daemon/model/merge.h"

#include "daemon/model/state_description.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace hana = boost::hana;

template <typename Element>
int KeyOf(const Element& element) {
  if constexpr (requires { element.id; }) {
    return element.id;
  } else {
    return static_cast<int>(element.radio);
  }
}

template <typename List>
auto FindKey(List& list, int key) {
  return std::ranges::find_if(list, [key](const auto& element) { return KeyOf(element) == key; });
}

constexpr bool IsCounter(std::string_view member) {
  return member == "nextNetworkId" || member == "nextMACFilterProfileId";
}

/// Whole, where nothing else is said below.
template <typename T>
void RevertMember(T& current, const T& before, const T& after) {
  if (before != after) {
    current = before;
  }
}

template <Wifi::Record T>
void RevertEachMember(T& current, const T& before, const T& after);

void RevertMember(NetworkState& current, const NetworkState& before, const NetworkState& after) {
  RevertEachMember(current, before, after);
}

/// Element by element. Lists are in the order of their keys.
template <typename Element>
void RevertMember(std::vector<Element>& current, const std::vector<Element>& before,
                  const std::vector<Element>& after) {
  std::erase_if(current, [&](const Element& element) {
    const int key = KeyOf(element);
    return FindKey(before, key) == before.end() && FindKey(after, key) != after.end();
  });
  for (const Element& wanted : before) {
    const int key = KeyOf(wanted);
    const auto changed = FindKey(after, key);
    const auto present = FindKey(current, key);
    if (changed != after.end()) {
      if (present != current.end()) {
        RevertMember(*present, wanted, *changed);
      }
    } else if (present != current.end()) {
      *present = wanted;
    } else {
      const auto next =
          std::ranges::find_if(current, [key](const Element& element) { return KeyOf(element) > key; });
      current.insert(next, wanted);
    }
  }
}

template <Wifi::Record T>
void RevertEachMember(T& current, const T& before, const T& after) {
  hana::for_each(hana::accessors<T>(), [&](const auto& accessor) {
    if constexpr (!IsCounter(Wifi::MemberOf<decltype(accessor), T>::name)) {
      const auto member = hana::second(accessor);
      RevertMember(member(current), member(before), member(after));
    }
  });
}

}  // namespace

State Revert(const State& current, const State& before, const State& after) {
  State reverted = current;
  RevertEachMember(reverted, before, after);
  return reverted;
}

}  // namespace TALO::Wifid
