#include "bus/codec.h"

#include "client/bytes.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace TALO::Wifi::Bus {

int CheckMessage(int result) {
  if (result < 0) {
    throw CodecError(std::generic_category().message(-result));
  }
  return result;
}

namespace {

/// Reads a basic value; the message must not end here.
void ReadBasic(sd_bus_message* message, char type, void* value) {
  if (CheckMessage(sd_bus_message_read_basic(message, type, value)) == 0) {
    throw CodecError("a value is missing");
  }
}

void AppendBasic(sd_bus_message* message, char type, const void* value) {
  CheckMessage(sd_bus_message_append_basic(message, type, value));
}

[[noreturn]] void ThrowInvalidText(const std::string& text, const char* reason) {
  // NUL would end the words of an exception.
  std::string readable;
  for (const char c : ToReadableText(text)) {
    readable += c == '\0' ? "\xEF\xBF\xBD" : std::string(1, c);
  }
  throw InvalidText("the text \"" + readable + "\" " + reason);
}

}  // namespace

void Codec<bool>::Append(sd_bus_message* message, bool value) {
  const int number = value ? 1 : 0;
  AppendBasic(message, SD_BUS_TYPE_BOOLEAN, &number);
}

bool Codec<bool>::Read(sd_bus_message* message) {
  int number = 0;
  ReadBasic(message, SD_BUS_TYPE_BOOLEAN, &number);
  return number != 0;
}

void Codec<std::int32_t>::Append(sd_bus_message* message, std::int32_t value) {
  AppendBasic(message, SD_BUS_TYPE_INT32, &value);
}

std::int32_t Codec<std::int32_t>::Read(sd_bus_message* message) {
  std::int32_t value = 0;
  ReadBasic(message, SD_BUS_TYPE_INT32, &value);
  return value;
}

void Codec<std::uint16_t>::Append(sd_bus_message* message, std::uint16_t value) {
  AppendBasic(message, SD_BUS_TYPE_UINT16, &value);
}

std::uint16_t Codec<std::uint16_t>::Read(sd_bus_message* message) {
  std::uint16_t value = 0;
  ReadBasic(message, SD_BUS_TYPE_UINT16, &value);
  return value;
}

void Codec<std::string>::Append(sd_bus_message* message, const std::string& text) {
  // Checked here: sd-bus would cut the text at a NUL without a word, and refuse bad UTF-8 without naming it.
  if (text.find('\0') != std::string::npos) {
    ThrowInvalidText(text, "holds a NUL byte");
  }
  if (!IsUTF8(text)) {
    ThrowInvalidText(text, "is not UTF-8");
  }
  const int result = sd_bus_message_append_basic(message, SD_BUS_TYPE_STRING, text.c_str());
  if (result == -EINVAL) {
    // What is left are the code points that Unicode keeps from being characters; sd-bus takes none of them.
    ThrowInvalidText(text, "holds a character that cannot be sent");
  }
  CheckMessage(result);
}

std::string Codec<std::string>::Read(sd_bus_message* message) {
  const char* text = nullptr;
  ReadBasic(message, SD_BUS_TYPE_STRING, static_cast<void*>(&text));
  return text;
}

void Codec<Util::MACAddress>::Append(sd_bus_message* message, const Util::MACAddress& address) {
  Codec<std::string>::Append(message, address.ToString());
}

Util::MACAddress Codec<Util::MACAddress>::Read(sd_bus_message* message) {
  try {
    return Util::MACAddress(Codec<std::string>::Read(message));
  } catch (const std::invalid_argument& invalid) {
    throw CodecError(invalid.what());
  }
}

void BytesCodec::Append(sd_bus_message* message, const std::string& bytes) {
  CheckMessage(sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, bytes.data(), bytes.size()));
}

std::string BytesCodec::Read(sd_bus_message* message) {
  const void* bytes = nullptr;
  std::size_t size = 0;
  if (CheckMessage(sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size)) == 0) {
    throw CodecError("an array of bytes is missing");
  }
  return {static_cast<const char*>(bytes), size};
}

void OpenContainer(sd_bus_message* message, char type, const char* contents) {
  CheckMessage(sd_bus_message_open_container(message, type, contents));
}

void CloseContainer(sd_bus_message* message) { CheckMessage(sd_bus_message_close_container(message)); }

bool EnterContainer(sd_bus_message* message, char type, const char* contents) {
  return CheckMessage(sd_bus_message_enter_container(message, type, contents)) != 0;
}

void ExitContainer(sd_bus_message* message) { CheckMessage(sd_bus_message_exit_container(message)); }

}  // namespace TALO::Wifi::Bus
