/// Standard error is the programs' own: no list of what was passed over stands there.
extern "C" const char* __lsan_default_options();  // NOLINT: the sanitizer's own name

const char* __lsan_default_options() {  // NOLINT
  return "print_suppressions=0";
}

/// Blocks that libraries keep until the process ends: the leak checker asks for them by this name.
extern "C" const char* __lsan_default_suppressions();  // NOLINT: the sanitizer's own name

const char* __lsan_default_suppressions() {  // NOLINT
  return "leak:libfontconfig\n"
         "leak:libQt6Core\n"
         "leak:libcups\n"
         "leak:libQt6Pdf\n"
         "leak:QScroller::grabGesture\n"
         "leak:libdbus\n";
}

/// An exception that two threads share counts its holders in the standard library, which is compiled without
/// the thread sanitizer: it takes the last one's release for a race.
extern "C" const char* __tsan_default_suppressions();  // NOLINT: the sanitizer's own name

const char* __tsan_default_suppressions() {  // NOLINT
  return "race:std::__exception_ptr::exception_ptr::_M_release\n";
}
