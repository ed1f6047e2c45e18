#include "reference/bus_page.h"

#include "bus/errors.h"
#include "reference/page_source.h"
#include "reference/roff.h"
#include "reference/signature.h"
#include "values/enum_names.h"

namespace TALO::Reference {

namespace {

/// The paragraphs below a heading; an item of a list has a bullet.
std::string Paragraphs(const std::vector<std::string>& texts) {
  std::string roff;
  for (const std::string& text : texts) {
    if (text.starts_with("- ")) {
      roff += ".IP \\(bu 2\n" + Escape(text.substr(2)) + "\n";
    } else {
      roff += (roff.empty() ? "" : ".PP\n") + Escape(text) + "\n";
    }
  }
  return roff;
}

/// The names of those on one side.
std::string NamesInParentheses(const BusMember& member, bool results) {
  std::string names;
  for (const BusArgument& argument : member.arguments) {
    if (argument.isResult == results) {
      names += (names.empty() ? "" : ", ") + Italic(argument.name);
    }
  }
  return names;
}

std::string MemberSection(const BusMember& member) {
  std::string form =
      (member.isSignal ? "signal " : "") + Bold(member.name) + "(" + NamesInParentheses(member, false) + ")";
  if (const std::string results = NamesInParentheses(member, true); !results.empty()) {
    form += " \\(-> " + results;
  }
  std::string roff = Macro("SS", Escape(member.name)) + form + "\n.PP\n" + Sentence(member.prose) + "\n";
  for (const BusArgument& argument : member.arguments) {
    roff += ".TP\n" + Italic(argument.name) + "\n" + Sentence(argument.prose) + "\n.br\n" +
            (member.isSignal     ? "Value"
             : argument.isResult ? "Result"
                                 : "Argument") +
            " of type " + Bold(argument.type) + ": " + Escape(SignatureInWords(argument.type)) + ".\n";
  }
  return roff;
}

std::string InterfaceSection(const BusInterfaceDocument& interface) {
  std::string roff = Macro("SH", "INTERFACE " + Escape(interface.name)) + Paragraphs(interface.prose);
  for (const BusMember& member : interface.members) {
    roff += MemberSection(member);
  }
  return roff;
}

template <typename E>
std::string EnumerationParagraph(const char* name) {
  std::string list;
  for (const std::string& word : Wifi::Util::EnumWords<E>()) {
    const auto number = static_cast<int>(Wifi::Util::EnumFromName<E>(word));
    list += (list.empty() ? "" : ", ") + Bold(word) + " " + std::to_string(number);
  }
  return ".TP\n" + Bold(name) + "\n" + list + ".\n";
}

std::string EnumerationParagraphs() {
  using namespace Wifi::Util;  // NOLINT(google-build-using-namespace): names of the lines below
  return EnumerationParagraph<RadioFrequency>("RadioFrequency") +
         EnumerationParagraph<SecurityMode>("SecurityMode") + EnumerationParagraph<ScanType>("ScanType") +
         EnumerationParagraph<Wifi::MACFilterAction>("MACFilterAction") +
         EnumerationParagraph<SupportedModel>("SupportedModel") +
         EnumerationParagraph<ScheduleMode>("ScheduleMode") + EnumerationParagraph<LogLevel>("LogLevel") +
         EnumerationParagraph<Wifi::CountryCode>("CountryCode");
}

}  // namespace

std::vector<BusError> ReadBusErrors() {
  std::vector<BusError> errors;
  for (const Wifi::ErrorCode code : Wifi::Bus::Refusals()) {
    errors.push_back({Wifi::Bus::ErrorNameOf(code), make_error_code(code).message()});
  }
  return errors;
}

std::string BusPage(const std::string& source, const std::vector<BusInterfaceDocument>& interfaces,
                    const std::vector<BusError>& errors) {
  std::string roff;
  Checklist interfaceNames("an interface", NamesOf(interfaces));
  Checklist errorNames("an error", NamesOf(errors));
  const auto pieces = ReadPieces(source);
  for (const Piece& piece : pieces) {
    if (piece.word == "enumerations") {
      roff += EnumerationParagraphs();
    } else if (piece.word == "interface") {
      roff += InterfaceSection(interfaces[interfaceNames.Tick(piece)]);
    } else if (piece.word == "error") {
      const BusError& error = errors[errorNames.Tick(piece)];
      roff += ".TP\n" + Bold(error.name) + " (" + Escape(error.text) + ")\n";
    } else if (!piece.word.empty()) {
      throw SourceError(piece, "@" + piece.word + " has no place here");
    }
    roff += piece.text;
  }
  interfaceNames.Finish(pieces.back());
  errorNames.Finish(pieces.back());
  return roff;
}

}  // namespace TALO::Reference
