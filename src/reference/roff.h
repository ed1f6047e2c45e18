#pragma once

#include <string>
#include <string_view>

/// Pieces of a manual page in the man(7) macros.
namespace TALO::Reference {

/// The text as roff shows it unchanged, wherever it stands: in a line of text or as a macro's argument in
/// quotes. Blanks and dashes come out so that what is copied from a terminal works.
std::string Escape(std::string_view text);

std::string Bold(std::string_view text);
std::string Italic(std::string_view text);

/// A phrase as a sentence: with a capital in front and a full stop behind.
std::string Sentence(std::string_view phrase);

/// A macro with its one argument, as a line.
std::string Macro(std::string_view name, std::string_view argument);

}  // namespace TALO::Reference
