#pragma once

#include <string>
#include <vector>

namespace TALO::Reference {

/// An argument of a method or signal with its prose.
struct BusArgument {
  std::string name;
  std::string type;  ///< as a signature
  bool isResult = false;
  std::string prose = {};

  bool operator==(const BusArgument&) const = default;
};

struct BusMember {
  std::string name;
  bool isSignal = false;
  std::string prose = {};
  std::vector<BusArgument> arguments = {};

  bool operator==(const BusMember&) const = default;
};

/// What a file of src/bus/api says.
struct BusInterfaceDocument {
  std::string name;
  std::vector<std::string> prose = {};  ///< paragraphs; one that begins with "- " is an item of a list
  std::vector<BusMember> members = {};

  bool operator==(const BusInterfaceDocument&) const = default;
};

/// Reads the text of such a file: a comment in front of the interface, and in front of each member one that
/// begins with the member's name and a colon, and describes each argument from its name and a colon on.
/// Throws std::invalid_argument where a member or an argument is without prose.
BusInterfaceDocument ReadBusDocument(const std::string& xml);

}  // namespace TALO::Reference
