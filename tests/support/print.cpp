#include "support/print.h"

#include <cstdint>
#include <iomanip>

namespace TALO::Wifi::Printing {

void PrintText(std::ostream& out, const std::string& text) {
  out << '"';
  for (const char c : text) {
    if (c >= ' ' && c <= '~') {
      out << c;
    } else {
      out << "\\x" << std::hex << std::setw(2) << std::setfill('0')
          << static_cast<unsigned>(static_cast<std::uint8_t>(c)) << std::dec << std::setfill(' ');
    }
  }
  out << '"';
}

}  // namespace TALO::Wifi::Printing
