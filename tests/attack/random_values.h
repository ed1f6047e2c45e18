#pragma once

#include <systemd/sd-bus.h>

#include <random>
#include <string>

/// Values that nobody expects.
namespace TALO::Attack {

using Random = std::mt19937;

/// A signature of some complete types, containers in containers among them; may be empty.
std::string RandomSignature(Random& random);

/// What the values are like.
enum class Size {
  Any,   ///< mostly small, with limits and strange texts among them
  Huge,  ///< texts and lists far beyond what any operation takes
};

/// Appends a value for each type of the signature.
void AppendRandom(sd_bus_message* message, const std::string& signature, Random& random,
                  Size size = Size::Any);

/// Variants in variants, as deep as a message may nest.
void AppendNested(sd_bus_message* message);

/// One of so many.
int Pick(Random& random, int count);

}  // namespace TALO::Attack
