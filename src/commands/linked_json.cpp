#include "commands/styled_json.h"

#include <iostream>

namespace TALO::Tool {

void printStyledJSON(Printable what) { writeStyledJSON(what, std::cout); }

}  // namespace TALO::Tool
