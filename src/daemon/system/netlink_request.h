#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct nl_msg;

namespace TALO::Wifid {

/// A message to the kernel that is being written. All throw std::bad_alloc when there is no room.
class NetlinkRequest {
 public:
  /// `flags` as in NLM_F_DUMP; `header` is what stands before the attributes.
  template <typename Header>
  NetlinkRequest(int type, int flags, const Header& header)
      : NetlinkRequest(type, flags, &header, sizeof header) {}

  template <typename T>
  NetlinkRequest& Number(int type, T number) {
    return Put(type, &number, sizeof number);
  }
  NetlinkRequest& Flag(int type) { return Put(type, nullptr, 0); }
  NetlinkRequest& Bytes(int type, const std::string& bytes) { return Put(type, bytes.data(), bytes.size()); }
  /// With a zero at its end.
  NetlinkRequest& Text(int type, const std::string& text) { return Put(type, text.c_str(), text.size() + 1); }

  nl_msg* Get() const { return message_.get(); }

 private:
  struct FreeMessage {
    void operator()(nl_msg* message) const noexcept;
  };

  NetlinkRequest(int type, int flags, const void* header, std::size_t size);
  NetlinkRequest& Put(int type, const void* data, std::size_t size);

  std::unique_ptr<nl_msg, FreeMessage> message_;
};

}  // namespace TALO::Wifid
