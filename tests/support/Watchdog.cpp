#include "tests/support/Watchdog.h"

#include <cstdio>
#include <utility>
#include <windows.h>

Watchdog::Watchdog(std::string what, unsigned seconds)
    : finished(CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                            /*bInitialState=*/FALSE, /*lpName=*/nullptr)),
      thread([event = finished.Get(), name = std::move(what), seconds] {
          if (WaitForSingleObject(event, seconds * 1000) != WAIT_TIMEOUT)
              return;
          std::fprintf(stderr, "%s: hangs for %u s, ended\n", name.c_str(), seconds);
          std::fflush(nullptr);
          TerminateProcess(GetCurrentProcess(), 3);
      }) {}

Watchdog::~Watchdog() {
    SetEvent(finished.Get());
    thread.join();
}
