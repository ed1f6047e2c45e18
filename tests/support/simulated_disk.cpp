#include "support/simulated_disk.h"

#include <cerrno>
#include <utility>

namespace TALO::Wifid {

class SimulatedFile final : public NewFile {
 public:
  SimulatedFile(SimulatedDisk& disk, std::shared_ptr<SimulatedDisk::Content> content)
      : disk_(disk), content_(std::move(content)) {}

  void Write(std::string_view text) override {
    // What a failure or a power cut interrupts has written some of it.
    content_->text = text.substr(0, text.size() / 2);
    disk_.Begin("writing");
    content_->text = text;
  }
  void Sync() override {
    disk_.Begin("syncing");
    content_->synced = true;
  }

 private:
  SimulatedDisk& disk_;
  std::shared_ptr<SimulatedDisk::Content> content_;
};

SimulatedDisk::SimulatedDisk(const Files& files) {
  for (const auto& [name, text] : files) {
    names_[name] = std::make_shared<Content>(Content{text, true});
  }
  synced_ = names_;
}

void SimulatedDisk::FailAfter(int calls, int error, int count) {
  failFrom_ = calls_ + calls;
  failTo_ = failFrom_ + count;
  error_ = error;
}

void SimulatedDisk::Begin(const char* step) {
  const int call = calls_++;
  if (cutAt_ >= 0 && call >= cutAt_) {
    throw PowerCut();
  }
  if (call >= failFrom_ && call < failTo_) {
    throw StorageFailure(step, error_);
  }
}

void SimulatedDisk::Change(const Names& change) {
  for (const auto& [name, content] : change) {
    names_[name] = content;
  }
  std::erase_if(names_, [](const auto& name) { return name.second == nullptr; });
  changes_.push_back(change);
}

std::optional<std::string> SimulatedDisk::Read(const std::string& name) {
  Begin("reading");
  const auto found = names_.find(name);
  return found != names_.end() ? std::optional(found->second->text) : std::nullopt;
}

std::unique_ptr<NewFile> SimulatedDisk::Create(const std::string& name) {
  Begin("opening");
  if (names_.contains(name)) {
    throw StorageFailure("opening", EEXIST);
  }
  auto content = std::make_shared<Content>();
  Change({{name, content}});
  return std::make_unique<SimulatedFile>(*this, std::move(content));
}

bool SimulatedDisk::Link(const std::string& from, const std::string& to) {
  Begin("linking");
  if (!names_.contains(from)) {
    return false;
  }
  if (names_.contains(to)) {
    throw StorageFailure("linking", EEXIST);
  }
  Change({{to, names_.at(from)}});
  return true;
}

bool SimulatedDisk::Rename(const std::string& from, const std::string& to) {
  Begin("renaming");
  const auto found = names_.find(from);
  if (found == names_.end()) {
    return false;
  }
  // Two names of one file: nothing is done, as the kernel has it.
  const auto other = names_.find(to);
  if (other == names_.end() || other->second != found->second) {
    Change({{from, nullptr}, {to, found->second}});
  }
  return true;
}

bool SimulatedDisk::Unlink(const std::string& name) {
  Begin("removing");
  if (!names_.contains(name)) {
    return false;
  }
  Change({{name, nullptr}});
  return true;
}

void SimulatedDisk::SyncDirectory() {
  Begin("syncing the directory");
  synced_ = names_;
  changes_.clear();
}

SimulatedDisk::Files SimulatedDisk::Now() const {
  Files files;
  for (const auto& [name, content] : names_) {
    files[name] = content->text;
  }
  return files;
}

std::set<SimulatedDisk::Files> SimulatedDisk::AfterPowerCut() const {
  std::set<Files> all;
  for (std::size_t selection = 0; selection < std::size_t{1} << changes_.size(); ++selection) {
    Names names = synced_;
    for (std::size_t i = 0; i < changes_.size(); ++i) {
      if ((selection >> i) % 2 == 1) {
        for (const auto& [name, content] : changes_[i]) {
          names[name] = content;
        }
      }
    }
    AddFiles(names, all);
  }
  return all;
}

/// Every way in which files that were not synced can be; each name by itself.
void SimulatedDisk::AddFiles(const Names& names, std::set<Files>& all) {
  std::vector<Files> ways = {{}};
  for (const auto& [name, content] : names) {
    if (content == nullptr) {
      continue;
    }
    const std::string& text = content->text;
    std::set<std::string> texts = {text};
    if (!content->synced) {
      texts.insert({"", text.substr(0, text.size() / 2), std::string(text.size(), '\0')});
    }
    std::vector<Files> longer;
    for (const Files& way : ways) {
      for (const std::string& each : texts) {
        longer.push_back(way);
        longer.back()[name] = each;
      }
    }
    ways = std::move(longer);
  }
  all.insert(ways.begin(), ways.end());
}

}  // namespace TALO::Wifid
