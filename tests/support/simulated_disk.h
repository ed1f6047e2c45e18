#pragma once

#include "daemon/store/storage_calls.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The power goes before a call; none comes any more.
struct PowerCut {};

/// A directory on a disk that forgets on a power cut what it was not told to keep: of the changes of names
/// since the directory was synced any selection may have come to stay, and a file that was not synced may be
/// whole, cut off, empty or made of zeros.
class SimulatedDisk final : public StorageCalls {
 public:
  /// Name to text.
  using Files = std::map<std::string, std::string>;

  SimulatedDisk() = default;
  /// With these files, which are there to stay.
  explicit SimulatedDisk(const Files& files);

  /// How many calls were made so far.
  int Calls() const { return calls_; }
  /// The power goes before the call after `calls` more.
  void CutAfter(int calls) { cutAt_ = calls_ + calls; }
  /// Of the calls after `calls` more, the first `count` fail with this error.
  void FailAfter(int calls, int error, int count = 1);

  /// As it is for who looks at it now.
  Files Now() const;
  /// Everything that a power cut now can leave of it.
  std::set<Files> AfterPowerCut() const;

  std::optional<std::string> Read(const std::string& name) override;
  std::unique_ptr<NewFile> Create(const std::string& name) override;
  bool Link(const std::string& from, const std::string& to) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool Unlink(const std::string& name) override;
  void SyncDirectory() override;

 private:
  friend class SimulatedFile;

  struct Content {
    std::string text;
    bool synced = false;
  };
  /// Nothing: the name is free.
  using Names = std::map<std::string, std::shared_ptr<Content>>;

  void Begin(const char* step);
  /// Changes names now, and on the disk with the next sync.
  void Change(const Names& change);
  static void AddFiles(const Names& names, std::set<Files>& all);

  Names names_;
  Names synced_;
  std::vector<Names> changes_;  ///< since the directory was synced; what follows each name from there on
  int calls_ = 0;
  int cutAt_ = -1;
  int failFrom_ = 0;
  int failTo_ = 0;
  int error_ = 0;
};

}  // namespace TALO::Wifid
