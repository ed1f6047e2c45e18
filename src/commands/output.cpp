#include "commands/output.h"

#include "values/enum_names.h"

namespace TALO::Tool {

void printNetworkInterfaces(const std::map<int, std::set<std::string>>& interfaces) {
  for (const auto& [id, names] : interfaces) {
    std::cout << "ID: " << id << ", Interface: " << std::endl;
    for (const std::string& name : names) {
      std::cout << "\t" << name << std::endl;
    }
  }
  std::cout << std::endl;
}

void printRadioInterfaces(const std::map<Wifi::Util::RadioFrequency, std::string>& interfaces) {
  std::cout << "Interfaces: " << std::endl;
  for (const auto& [radio, name] : interfaces) {
    std::cout << "\t " << Wifi::Util::EnumNameOf(radio) << " : " << name << std::endl;
  }
  std::cout << std::endl;
}

}  // namespace TALO::Tool
