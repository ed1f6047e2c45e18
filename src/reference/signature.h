#pragma once

#include <string>
#include <string_view>

namespace TALO::Reference {

/// The types of a D-Bus signature in words: "a{ias}" is "map of int32 to list of string". Throws
/// std::invalid_argument for what is no signature, and for types that this service does not use.
std::string SignatureInWords(std::string_view signature);

}  // namespace TALO::Reference
