// The least that a program can do to ask the wifi daemon: plain C on sd-bus, one line printed for each
// answer.
//
// usage: bench-c-client CALL..., each the name of a method of com.talo.Wifi1.General, or LogLevel for that
// property

#include <systemd/sd-bus.h>

#include <stdio.h>
#include <string.h>

static int ask(sd_bus* bus, const char* what, sd_bus_message** answer, sd_bus_error* error) {
  if (strcmp(what, "LogLevel") == 0) {
    return sd_bus_get_property(bus, "com.talo.Wifi1", "/org/freedesktop/LogControl1",
                               "org.freedesktop.LogControl1", what, error, answer, "s");
  }
  return sd_bus_call_method(bus, "com.talo.Wifi1", "/com/talo/Wifi1", "com.talo.Wifi1.General", what, error,
                            answer, "");
}

int main(int argc, char** argv) {
  sd_bus* bus = NULL;
  if (sd_bus_open_system(&bus) < 0) {
    return 1;
  }
  for (int i = 1; i < argc; ++i) {
    sd_bus_error error = SD_BUS_ERROR_NULL;
    sd_bus_message* answer = NULL;
    if (ask(bus, argv[i], &answer, &error) < 0) {
      fprintf(stderr, "%s: %s\n", argv[i], error.message);
      return 1;
    }
    printf("%s %s\n", argv[i], sd_bus_message_get_signature(answer, 1));
    sd_bus_message_unref(answer);
  }
  sd_bus_flush_close_unref(bus);
  return 0;
}
