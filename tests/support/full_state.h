#pragma once

#include "daemon/model/state.h"

#include <string>

namespace TALO::Wifid {

/// A state in which every member of every struct differs from its default. It could be
/// one of a real router, though what matters is that each member can be told from one that was not read.
State FullState();

/// Its text as daemons of that version wrote it, from a sample that is kept; empty where there is none.
std::string SampleOfVersion(int version);

/// Its text, as EncodeState is to write it.
std::string FullText();

/// The same without its checksum, so that a test can change it.
std::string FullTextWithoutChecksum();

}  // namespace TALO::Wifid
