#include "support/introspection.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace TALO::EndToEnd {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// A start tag or an end tag.
struct Tag {
  std::string name;
  std::map<std::string, std::string> attributes;
  bool isEnd = false;    ///< </name>
  bool isEmpty = false;  ///< <name/>
};

[[noreturn]] void Fail(const std::string& what) { throw std::invalid_argument("no introspection: " + what); }

/// Hands out the tags of a text one after the other. Entities in attributes are left as they stand: nothing
/// that D-Bus names or types can hold needs one.
class TagScanner {
 public:
  explicit TagScanner(std::string_view text) : left_(text) {}

  /// False at the end of the text.
  bool Next(Tag& tag) {
    for (;;) {
      const std::size_t start = left_.find('<');
      if (start == std::string_view::npos) {
        return false;
      }
      left_.remove_prefix(start + 1);
      if (left_.starts_with("!--")) {
        SkipBehind("-->");
      } else if (left_.starts_with("!") || left_.starts_with("?")) {
        SkipBehind(">");
      } else {
        tag = ReadTag();
        return true;
      }
    }
  }

 private:
  void SkipBehind(std::string_view end) {
    const std::size_t at = left_.find(end);
    if (at == std::string_view::npos) {
      Fail("something does not end with " + std::string(end));
    }
    left_.remove_prefix(at + end.size());
  }

  void SkipBlanks() { left_.remove_prefix(std::min(left_.find_first_not_of(kBlanks), left_.size())); }

  bool Take(std::string_view expected) {
    const bool there = left_.starts_with(expected);
    if (there) {
      left_.remove_prefix(expected.size());
    }
    return there;
  }

  std::string TakeUntil(std::string_view ends) {
    const std::size_t size = left_.find_first_of(ends);
    if (size == std::string_view::npos) {
      Fail("a tag does not end");
    }
    std::string text(left_.substr(0, size));
    left_.remove_prefix(size);
    return text;
  }

  Tag ReadTag() {
    Tag tag;
    tag.isEnd = Take("/");
    tag.name = TakeUntil(" \t\r\n/>");
    for (;;) {
      SkipBlanks();
      if (Take("/>")) {
        tag.isEmpty = true;
        return tag;
      }
      if (Take(">")) {
        return tag;
      }
      const std::string name = TakeUntil("=");
      Take("=");
      const std::string quote(left_.substr(0, 1));
      if (quote != "\"" && quote != "'") {
        Fail("the attribute " + name + " has no value");
      }
      Take(quote);
      tag.attributes[name] = TakeUntil(quote);
      Take(quote);
    }
  }

  std::string_view left_;
};

std::string AttributeOf(const Tag& tag, const std::string& name) {
  const auto found = tag.attributes.find(name);
  if (found == tag.attributes.end()) {
    Fail("an element " + tag.name + " has no " + name);
  }
  return found->second;
}

template <typename Members>
auto& Add(Members& members, const Tag& tag) {
  const auto [member, added] = members.try_emplace(AttributeOf(tag, "name"));
  if (!added) {
    Fail("there are two of " + member->first);
  }
  return member->second;
}

/// Follows the tags down into interfaces and members and back; what it has no use for it skips as a whole.
class Reader {
 public:
  explicit Reader(std::string_view text) : scanner_(text) {}

  std::map<std::string, DescribedInterface> Read() {
    Tag tag;
    if (!scanner_.Next(tag) || tag.name != "node" || tag.isEnd) {
      Fail("it does not begin with a node");
    }
    ForEachChild(tag, [this](const Tag& child) {
      if (child.name == "interface") {
        ReadInterface(child);
      } else {
        Skip(child);
      }
    });
    return std::move(interfaces_);
  }

 private:
  /// Calls `visit` with the start tag of each child; that must take the child's own children away.
  template <typename Visit>
  void ForEachChild(const Tag& parent, Visit visit) {
    if (parent.isEmpty) {
      return;
    }
    for (Tag tag; scanner_.Next(tag);) {
      if (!tag.isEnd) {
        visit(tag);
      } else if (tag.name == parent.name) {
        return;
      } else {
        Fail(parent.name + " ends with " + tag.name);
      }
    }
    Fail("an element " + parent.name + " does not end");
  }

  void Skip(const Tag& tag) {
    ForEachChild(tag, [this](const Tag& child) { Skip(child); });
  }

  void ReadInterface(const Tag& tag) {
    DescribedInterface& interface = Add(interfaces_, tag);
    ForEachChild(tag, [&](const Tag& child) {
      if (child.name == "method") {
        ReadArguments(child, Add(interface.methods, child), "in");
      } else if (child.name == "signal") {
        ReadArguments(child, Add(interface.signals, child), "out");
      } else {
        if (child.name == "property") {
          Add(interface.properties, child) = {AttributeOf(child, "type"), AttributeOf(child, "access")};
        }
        Skip(child);
      }
    });
  }

  void ReadArguments(const Tag& tag, std::vector<DescribedArgument>& arguments,
                     const std::string& usualDirection) {
    ForEachChild(tag, [&](const Tag& child) {
      if (child.name == "arg") {
        const auto direction = child.attributes.find("direction");
        arguments.push_back({AttributeOf(child, "name"), AttributeOf(child, "type"),
                             direction != child.attributes.end() ? direction->second : usualDirection});
      }
      Skip(child);
    });
  }

  TagScanner scanner_;
  std::map<std::string, DescribedInterface> interfaces_;
};

void PrintMembers(std::ostream& out, const char* kind,
                  const std::map<std::string, std::vector<DescribedArgument>>& members) {
  for (const auto& [name, arguments] : members) {
    out << "\n  " << kind << " " << name << "(";
    for (const DescribedArgument& argument : arguments) {
      out << " " << argument.direction << " " << argument.type << " " << argument.name;
    }
    out << " )";
  }
}

}  // namespace

void PrintTo(const DescribedInterface& interface, std::ostream* out) {
  PrintMembers(*out, "method", interface.methods);
  PrintMembers(*out, "signal", interface.signals);
  for (const auto& [name, property] : interface.properties) {
    *out << "\n  property " << property.access << " " << property.type << " " << name;
  }
}

std::map<std::string, DescribedInterface> ReadIntrospection(const std::string& xml) {
  return Reader(xml).Read();
}

}  // namespace TALO::EndToEnd
