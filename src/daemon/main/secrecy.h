#pragma once

namespace TALO::Wifid {

/// Keeps this process's memory, which holds passphrases, out of core files and from other processes of its
/// user; children write no core files either. Throws std::system_error when the system refuses.
void KeepMemorySecret();

}  // namespace TALO::Wifid
