#pragma once

#include <string>
#include <vector>

namespace TALO::Tool {

/// The process's arguments, taken out of where every user of the machine can read them. What is left there is
/// the program's name and the first word that names a command: any other word may be a passphrase, be it in
/// its place, mistyped or misplaced.
class TakenArguments {
 public:
  TakenArguments(int argc, char** argv);

  int Count() const { return static_cast<int>(words_.size()); }
  const char* const* Words() const { return pointers_.data(); }

 private:
  std::vector<std::string> words_;
  std::vector<const char*> pointers_;  ///< to the words, ends with null
};

}  // namespace TALO::Tool
