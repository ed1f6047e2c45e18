#include "daemon/service/message_size.h"

#include "bus/codec.h"
#include "bus/message.h"

#include <string_view>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

class Measurement {
 public:
  explicit Measurement(sd_bus_message* message) : message_(message) {}

  std::optional<std::string> Take() {
    AddText(std::string_view(sd_bus_message_get_path(message_)).size());
    while (!excess_ && !IsAtEnd()) {
      MeasureValue();
    }
    Bus::CheckMessage(sd_bus_message_rewind(message_, 1));
    return excess_;
  }

 private:
  bool IsAtEnd() const { return Bus::CheckMessage(sd_bus_message_at_end(message_, 0)) != 0; }

  // The nesting of containers is limited by sd-bus.
  void MeasureValue() {
    if (++values_ > kMaximumValues) {
      excess_ = "more than " + std::to_string(kMaximumValues) + " values";
      return;
    }
    char type = 0;
    const char* contents = nullptr;
    Bus::CheckMessage(sd_bus_message_peek_type(message_, &type, &contents));
    switch (type) {
      case SD_BUS_TYPE_ARRAY:
        MeasureArray(contents);
        return;
      case SD_BUS_TYPE_STRUCT:
      case SD_BUS_TYPE_DICT_ENTRY:
      case SD_BUS_TYPE_VARIANT:
        MeasureContents(type, contents);
        return;
      case SD_BUS_TYPE_STRING:
      case SD_BUS_TYPE_OBJECT_PATH:
      case SD_BUS_TYPE_SIGNATURE: {
        const char* text = nullptr;
        Bus::CheckMessage(sd_bus_message_read_basic(message_, type, static_cast<void*>(&text)));
        AddText(std::string_view(text).size());
        return;
      }
      default:
        Bus::CheckMessage(sd_bus_message_skip(message_, std::string(1, type).c_str()));
    }
  }

  void MeasureArray(const char* contents) {
    if (contents == std::string_view("y")) {
      const void* bytes = nullptr;
      std::size_t size = 0;
      Bus::CheckMessage(sd_bus_message_read_array(message_, SD_BUS_TYPE_BYTE, &bytes, &size));
      AddText(size);
      return;
    }
    MeasureContents(SD_BUS_TYPE_ARRAY, contents);
  }

  void MeasureContents(char type, const char* contents) {
    Bus::EnterContainer(message_, type, contents);
    for (std::size_t values = 0; !IsAtEnd(); ++values) {
      if (type == SD_BUS_TYPE_ARRAY && values == kMaximumListValues) {
        excess_ = "a list with more than " + std::to_string(kMaximumListValues) + " values";
      }
      if (excess_) {
        return;
      }
      MeasureValue();
    }
    Bus::ExitContainer(message_);
  }

  void AddText(std::size_t bytes) {
    bytesOfTexts_ += bytes;
    if (bytes > kMaximumTextBytes) {
      excess_ =
          "a text of " + std::to_string(bytes) + " bytes, it may have " + std::to_string(kMaximumTextBytes);
    } else if (bytesOfTexts_ > kMaximumBytesOfTexts) {
      excess_ = "texts of more than " + std::to_string(kMaximumBytesOfTexts) + " bytes";
    }
  }

  sd_bus_message* message_;
  std::size_t values_ = 0;
  std::size_t bytesOfTexts_ = 0;
  std::optional<std::string> excess_;
};

}  // namespace

std::optional<std::string> FindExcess(sd_bus_message* call) { return Measurement(call).Take(); }

}  // namespace TALO::Wifid
