#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace TALO::Hwsim {

/// How long anything in the air may take, on a machine that has little time for it.
inline constexpr std::chrono::seconds kPatience(40);

/// The same where somebody has to find out first that another hangs.
inline constexpr std::chrono::seconds kPatienceWithAHang(80);

/// Asks again and again until `holds` does. Throws std::runtime_error, which names `awaited`, when that takes
/// too long.
void WaitUntil(const std::string& awaited, const std::function<bool()>& holds,
               std::chrono::seconds patience = kPatience);

}  // namespace TALO::Hwsim
