#include "main/json_module.h"
#include "values/export.h"

#include <array>
#include <cstring>
#include <exception>
#include <ostream>
#include <streambuf>

namespace {

/// Hands on what is written in pieces of some size.
class SinkBuffer : public std::streambuf {
 public:
  explicit SinkBuffer(TALO::Tool::TextSink* sink) : sink_(sink) { setp(piece_.begin(), piece_.end()); }

 protected:
  int_type overflow(int_type next) override {
    sync();
    return traits_type::eq_int_type(next, traits_type::eof()) ? traits_type::not_eof(next)
                                                              : sputc(traits_type::to_char_type(next));
  }
  int sync() override {
    sink_(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(piece_.begin(), piece_.end());
    return 0;
  }

 private:
  static constexpr std::size_t kPiece = 16384;

  TALO::Tool::TextSink* sink_;
  std::array<char, kPiece> piece_;
};

}  // namespace

extern "C" TALO_WIFI_API bool talowifitoolWriteStyledJSON(const char* version, TALO::Tool::Printable what,
                                                          TALO::Tool::TextSink* sink,
                                                          std::string& reason) noexcept {
  if (std::strcmp(version, TALOWIFI_VERSION) != 0) {
    reason = "the module is of version " TALOWIFI_VERSION ", the program of another";
    return false;
  }
  try {
    SinkBuffer buffer(sink);
    std::ostream output(&buffer);
    TALO::Tool::writeStyledJSON(what, output);
    output.flush();
    return true;
  } catch (const std::exception& failure) {
    reason = failure.what();
    return false;
  }
}

static_assert(std::is_same_v<decltype(talowifitoolWriteStyledJSON), TALO::Tool::JSONModuleEntry>);
