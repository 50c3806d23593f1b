#include "apps/letters/interruption.h"

#include <signal.h>

#include <array>
#include <atomic>

namespace apps {
namespace {

constexpr auto kSignals = std::to_array<int>({SIGINT, SIGTERM, SIGHUP});

std::atomic<int> arrived_signal = 0;
static_assert(std::atomic<int>::is_always_lock_free);  // a signal handler may touch it

void NoteSignal(int number) {
  arrived_signal = number;
}

}  // namespace

Interruption::Interruption() {
  for (const int number : kSignals) {
    struct sigaction before = {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler == SIG_IGN) continue;
    struct sigaction noted = {};
    noted.sa_handler = NoteSignal;
    noted.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(number, &noted, nullptr);
  }
}

Interruption::~Interruption() {
  for (const int number : kSignals) {
    struct sigaction now = {};
    sigaction(number, nullptr, &now);
    if (now.sa_handler == NoteSignal) signal(number, SIG_DFL);
  }
}

int Interruption::Signal() {
  return arrived_signal;
}

void Interruption::EndBySignal() {
  if (const int number = arrived_signal; number != 0) {
    signal(number, SIG_DFL);
    raise(number);
  }
}

}  // namespace apps
