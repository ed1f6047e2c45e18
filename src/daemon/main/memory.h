#pragma once

namespace TALO::Wifid {

/// Has the C library give back to the kernel what large messages took, as soon as they are freed. Without it
/// each large one raises the size that the library keeps for the next, up to megabytes, for good. Before any
/// memory is taken.
void ReturnFreedMemory();

}  // namespace TALO::Wifid
