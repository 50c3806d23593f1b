#pragma once

namespace apps {

/// While it lives, Ctrl+C and the signals that end a service are a wish: the first one is noted, for work to
/// end where it leaves something whole; the same one again ends the program at once. A signal that was
/// ignored when the program started (nohup) stays ignored. One at a time. Decision [end-of-run].
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// The signal that came; 0 for none. Any thread.
  static int Signal();

  /// Ends the program by that signal, as whoever started it expects: a shell sees 128 and its number and
  /// stops its own loop too. Returns where none came.
  static void EndBySignal();
};

}  // namespace apps
