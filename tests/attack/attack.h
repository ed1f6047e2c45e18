#pragma once

namespace TALO::Attack {

/// Attacks a daemon of its own so many rounds, and prints what the answers were and what became of its
/// memory. False where the daemon did wrong; throws
/// std::runtime_error where it died or an answer is missing.
bool Attack(int rounds, unsigned seed);

}  // namespace TALO::Attack
