// Attacks the daemon over its bus, as nobody should: wrong and nested types, huge values, floods, callers
// that leave.
//
// usage: talowifi-attack [ROUNDS [SEED]]
//
// The status is 0 where the daemon lived, answered every call by a result or by an error with a name of its
// own or of D-Bus, and needs hardly more memory than before.

#include "attack/attack.h"

#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  try {
    const int rounds = argc > 1 ? std::stoi(argv[1]) : 5;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::stoul(argv[2])) : 1;
    return TALO::Attack::Attack(rounds, seed) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::cerr << "talowifi-attack: " << failure.what() << "\n";
    return 1;
  }
}
