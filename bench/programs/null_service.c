// A service that does nothing but answer: GetRadioIfStatuses of com.talo.Null1, with three radios that never
// change.

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

static int get_radio_if_statuses(sd_bus_message* call, void* data, sd_bus_error* error) {
  (void)data;
  (void)error;
  return sd_bus_reply_method_return(call, "a(isas)", 3, 0, "wlan0", 0, 1, "wlan1", 0, 2, "wlan2", 0);
}

static const sd_bus_vtable kMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("GetRadioIfStatuses", "", "a(isas)", get_radio_if_statuses, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

int main(void) {
  sd_event* loop = NULL;
  sd_bus* bus = NULL;
  if (sd_event_default(&loop) < 0 || sd_bus_open_system(&bus) < 0 || sd_bus_attach_event(bus, loop, 0) < 0 ||
      sd_bus_add_object_vtable(bus, NULL, "/com/talo/Null1", "com.talo.Null1", kMethods, NULL) < 0 ||
      sd_bus_request_name(bus, "com.talo.Null1", 0) < 0) {
    return 1;
  }
  return sd_event_loop(loop) < 0;
}
