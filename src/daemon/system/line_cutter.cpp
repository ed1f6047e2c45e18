#include "daemon/system/line_cutter.h"

#include <utility>

namespace TALO::Wifid {

void LineCutter::Append(std::string_view text) { line_ += text.substr(0, kLongest - line_.size()); }

std::vector<std::string> LineCutter::Take(std::string_view piece) {
  std::vector<std::string> lines;
  for (std::size_t end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
    Append(piece.substr(0, end));
    lines.push_back(std::exchange(line_, {}));
    piece.remove_prefix(end + 1);
  }
  Append(piece);
  return lines;
}

std::vector<std::string> LineCutter::TakeRest() {
  return line_.empty() ? std::vector<std::string>{} : std::vector{std::exchange(line_, {})};
}

}  // namespace TALO::Wifid
