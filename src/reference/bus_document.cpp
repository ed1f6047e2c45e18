#include "reference/bus_document.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <sstream>
#include <stdexcept>

namespace TALO::Reference {

namespace {

namespace pt = boost::property_tree;

constexpr const char* kComment = "<xmlcomment>";

/// The lines without the blanks around them.
std::vector<std::string> LinesOf(const std::string& comment) {
  std::vector<std::string> lines;
  std::istringstream stream(comment);
  for (std::string line; std::getline(stream, line);) {
    const std::size_t start = line.find_first_not_of(' ');
    lines.push_back(start == std::string::npos ? ""
                                               : line.substr(start, line.find_last_not_of(' ') - start + 1));
  }
  return lines;
}

/// The lines put together; an empty line and the start of an item begin a new paragraph.
std::vector<std::string> ParagraphsOf(const std::string& comment) {
  std::vector<std::string> paragraphs(1);
  for (const std::string& line : LinesOf(comment)) {
    if (line.empty() || line.starts_with("- ")) {
      paragraphs.emplace_back();
    }
    paragraphs.back() += (paragraphs.back().empty() || line.empty() ? "" : " ") + line;
  }
  std::erase(paragraphs, "");
  return paragraphs;
}

/// Where `line` begins with the name and a colon, what follows goes to `prose` from here on.
bool Begins(const std::string& line, const std::string& name, std::string& prose) {
  const std::string start = name + ": ";
  if (!line.starts_with(start)) {
    return false;
  }
  prose = line.substr(start.size());
  return true;
}

void ReadProse(const std::string& comment, BusMember& member) {
  std::string* current = nullptr;
  for (const std::string& line : LinesOf(comment)) {
    if (line.empty()) {
      continue;
    }
    bool begins = false;
    if (current == nullptr) {
      begins = Begins(line, member.name, member.prose);
      current = &member.prose;
      if (!begins) {
        break;
      }
    }
    for (BusArgument& argument : member.arguments) {
      if (Begins(line, argument.name, argument.prose)) {
        current = &argument.prose;
        begins = true;
      }
    }
    if (!begins) {
      *current += " " + line;
    }
  }
}

void RequireProse(const BusMember& member) {
  if (member.prose.empty()) {
    throw std::invalid_argument(member.name + " has no prose");
  }
  for (const BusArgument& argument : member.arguments) {
    if (argument.prose.empty()) {
      throw std::invalid_argument("the argument " + argument.name + " of " + member.name + " has no prose");
    }
  }
}

BusMember ReadMember(const std::string& kind, const pt::ptree& element, const std::string& comment) {
  BusMember member{.name = element.get<std::string>("<xmlattr>.name"), .isSignal = kind == "signal"};
  for (const auto& [key, child] : element) {
    if (key == "arg") {
      member.arguments.push_back({.name = child.get<std::string>("<xmlattr>.name"),
                                  .type = child.get<std::string>("<xmlattr>.type"),
                                  .isResult = child.get("<xmlattr>.direction", "") == "out"});
    }
  }
  ReadProse(comment, member);
  RequireProse(member);
  return member;
}

}  // namespace

BusInterfaceDocument ReadBusDocument(const std::string& xml) {
  std::istringstream stream(xml);
  pt::ptree tree;
  pt::read_xml(stream, tree);
  const pt::ptree& node = tree.get_child("node");
  const pt::ptree& interface = node.get_child("interface");
  BusInterfaceDocument document{.name = interface.get<std::string>("<xmlattr>.name"),
                                .prose = ParagraphsOf(node.get(kComment, ""))};
  std::string comment;
  for (const auto& [key, child] : interface) {
    if (key == kComment) {
      comment = child.data();
    } else if (key == "method" || key == "signal") {
      document.members.push_back(ReadMember(key, child, comment));
      comment.clear();
    }
  }
  return document;
}

}  // namespace TALO::Reference
