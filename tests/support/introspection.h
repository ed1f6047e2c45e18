#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace TALO::EndToEnd {

/// An argument of a method or signal.
struct DescribedArgument {
  std::string name;
  std::string type;
  std::string direction;  ///< "in" or "out"; a signal's is always "out"

  bool operator==(const DescribedArgument&) const = default;
};

struct DescribedProperty {
  std::string type;
  std::string access;  ///< "read", "write" or "readwrite"

  bool operator==(const DescribedProperty&) const = default;
};

/// What an <interface> element says, with its members by name. Annotations and documentation are left out.
struct DescribedInterface {
  std::map<std::string, std::vector<DescribedArgument>> methods;
  std::map<std::string, std::vector<DescribedArgument>> signals;
  std::map<std::string, DescribedProperty> properties;

  bool operator==(const DescribedInterface&) const = default;
};

void PrintTo(const DescribedInterface& interface, std::ostream* out);

/// The interfaces of an introspection text by name. Throws std::invalid_argument for a text that is no
/// introspection, or that names one thing twice.
std::map<std::string, DescribedInterface> ReadIntrospection(const std::string& xml);

}  // namespace TALO::EndToEnd
