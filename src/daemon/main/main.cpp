#include "daemon/main/callers_setup.h"
#include "daemon/main/chosen_driver.h"
#include "daemon/main/ending.h"
#include "daemon/main/event_clock.h"
#include "daemon/main/event_loop.h"
#include "daemon/main/event_timers.h"
#include "daemon/main/kernel_random.h"
#include "daemon/main/local_calendar.h"
#include "daemon/main/memory.h"
#include "daemon/main/options.h"
#include "daemon/main/secrecy.h"
#include "daemon/main/service_manager.h"
#include "daemon/main/setup_check.h"
#include "daemon/main/state_saving.h"
#include "daemon/main/stored_state.h"
#include "daemon/main/system_journal.h"
#include "daemon/service/bus_announcer.h"
#include "daemon/service/engine.h"
#include "daemon/service/event_log.h"
#include "daemon/service/service.h"
#include "daemon/store/state_directory.h"
#include "daemon/store/state_file.h"

#include <cstdlib>
#include <exception>
#include <variant>

namespace TALO::Wifid {

namespace {

void Serve(const Options& options) {
  CheckCountry(options);
  const SystemJournal journal;
  Log log(*SeverityOf(options.logLevel), journal,
          ErrorsGoToJournal() ? LogTarget::Journal : LogTarget::Console);
  EventLoop loop(options.bus, log);
  Callers callers = MakeCallers(loop.GetBus(), options.accessGroup, log);
  EventTimers timers(loop);
  EventClock clock(loop.GetEvent());
  const LocalCalendar calendar;
  KernelRandom random;
  BusAnnouncer announcer(log);
  ServiceManager manager(announcer);
  const ChosenDriver chosen(options, loop, timers, log);
  RadioDriver& driver = chosen.Get();
  CheckBridge(options, driver.GetBridges());
  StateDirectory directory(options.stateDirectory);
  StateFile store(directory, options.stateDirectory);
  StateSaving saving(loop, store, timers, log);
  Engine engine({saving.GetWriter(), driver, clock, calendar, manager, log},
                LoadState(store, driver.GetCapabilities(), options.country, log));
  WPSSessions wps(engine);
  ScheduleKeeper schedules(engine, timers);
  Service service({engine, wps, schedules, random, log, options.bridge,
                   [&callers](sd_bus_message* call) { return callers.Admit(call); }});

  driver.SetEventSink([&](const RadioEvent& event) {
    if (const auto* finished = std::get_if<WPSFinished>(&event)) {
      wps.Finished(*finished);
    }
    LogEvent(log, event);
    announcer.Happened(event);
  });
  callers.Attach(loop.GetBus());
  service.Attach(loop.GetBus());
  Ending ending(engine, timers);
  loop.WhenAskedToEnd([&] { ending.Begin([&] { loop.End(); }); });
  // Opened last, so that whoever finds the name finds the radios as they were left and everything behind it.
  engine.Start([&] {
    schedules.Rearm();
    loop.Open([&] { manager.Ready(engine); });
    // Not before: the bus keeps signals from those whom they are not for by the name of their sender.
    announcer.Attach(loop.GetBus());
  });
  saving.RunLoop();
}

}  // namespace

}  // namespace TALO::Wifid

int main(int argc, char** argv) {
  try {
    TALO::Wifid::ReturnFreedMemory();
    TALO::Wifid::KeepMemorySecret();
    if (const auto options = TALO::Wifid::ParseOptions(argc, argv)) {
      TALO::Wifid::Serve(*options);
    }
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    TALO::Wifid::SayWhyNot(failure.what());
    return EXIT_FAILURE;
  }
}
