#include "daemon/service/log_control.h"

#include "bus/names.h"

#include <array>
#include <string_view>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

constexpr const char* kConsole = "console";
constexpr const char* kJournal = "journal";

int AppendText(sd_bus_message* reply, const char* text) {
  return sd_bus_message_append_basic(reply, SD_BUS_TYPE_STRING, text);
}

}  // namespace

int LogControl::GetLevel(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                         sd_bus_error*) {
  return AppendText(reply, WordOf(static_cast<LogControl*>(self)->log_.GetLevel()).data());
}

int LogControl::SetLevel(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void* self,
                         sd_bus_error* error) {
  const char* word = nullptr;
  if (const int result = sd_bus_message_read_basic(value, SD_BUS_TYPE_STRING, static_cast<void*>(&word));
      result < 0) {
    return result;
  }
  for (int level = 0; level <= static_cast<int>(Severity::Debug); ++level) {
    const auto severity = static_cast<Severity>(level);
    if (WordOf(severity) == word) {
      static_cast<LogControl*>(self)->log_.SetLevel(severity);
      return 0;
    }
  }
  return sd_bus_error_setf(
      error, SD_BUS_ERROR_INVALID_ARGS,
      "\"%s\" is no log level; emerg, alert, crit, err, warning, notice, info and debug are", word);
}

int LogControl::GetTarget(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                          sd_bus_error*) {
  const bool console = static_cast<LogControl*>(self)->log_.GetTarget() == LogTarget::Console;
  return AppendText(reply, console ? kConsole : kJournal);
}

int LogControl::SetTarget(sd_bus*, const char*, const char*, const char*, sd_bus_message* value, void* self,
                          sd_bus_error* error) {
  const char* word = nullptr;
  if (const int result = sd_bus_message_read_basic(value, SD_BUS_TYPE_STRING, static_cast<void*>(&word));
      result < 0) {
    return result;
  }
  const std::string_view target = word;
  if (target != kConsole && target != kJournal) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS,
                             "\"%s\" is no log target here; console and journal are", word);
  }
  if (!static_cast<LogControl*>(self)->log_.SetTarget(target == kConsole ? LogTarget::Console
                                                                         : LogTarget::Journal)) {
    return sd_bus_error_set(error, SD_BUS_ERROR_NOT_SUPPORTED, "there is no journal here");
  }
  return 0;
}

int LogControl::GetIdentifier(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                              sd_bus_error*) {
  return AppendText(reply, Log::kIdentifier);
}

void LogControl::Attach(sd_bus* bus) {
  static const std::array<sd_bus_vtable, 5> kVtable = {{
      SD_BUS_VTABLE_START(0),
      SD_BUS_WRITABLE_PROPERTY("LogLevel", "s", GetLevel, SetLevel, 0, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_WRITABLE_PROPERTY("LogTarget", "s", GetTarget, SetTarget, 0, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_PROPERTY("SyslogIdentifier", "s", GetIdentifier, 0, SD_BUS_VTABLE_PROPERTY_CONST),
      SD_BUS_VTABLE_END,
  }};
  sd_bus_slot* slot = nullptr;
  Bus::CheckMessage(sd_bus_add_object_vtable(bus, &slot, Bus::kLogControlPath, Bus::kLogControlInterface,
                                             kVtable.data(), this));
  slot_.reset(slot);
}

}  // namespace TALO::Wifid
