#include "daemon/radio/linux/secrets.h"

#include "client/bytes.h"

#include <string_view>
#include <utility>

namespace TALO::Wifid {

void Secrets::Learn(const RadioPlan& plan) {
  Words words;
  for (const BSSPlan& bss : plan.bsss) {
    words.insert(bss.passphrase);
  }
  if (plan.station) {
    words.insert(plan.station->passphrase);
    // As wpa_supplicant gets that of an enterprise network.
    words.insert(Wifi::ToHex(plan.station->passphrase));
  }
  if (plan.backhaulStation) {
    words.insert(plan.backhaulStation->passphrase);
  }
  words.erase("");
  OfRadio& radio = words_[plan.radio];
  if (radio.now != words) {
    radio.before = std::exchange(radio.now, std::move(words));
  }
}

std::string Secrets::Hide(std::string line) const {
  constexpr const char* kHidden = "***";
  Words all;
  for (const auto& [radio, words] : words_) {
    all.insert(words.now.begin(), words.now.end());
    all.insert(words.before.begin(), words.before.end());
  }
  for (const std::string& word : all) {
    for (std::size_t at = line.find(word); at != std::string::npos; at = line.find(word, at)) {
      line.replace(at, word.size(), kHidden);
      at += std::string_view(kHidden).size();
    }
  }
  return line;
}

}  // namespace TALO::Wifid
