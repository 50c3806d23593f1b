#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

/// Preloaded into a program: kills it, as kill -9 does, at the moment a file gets or loses a name.
///
/// KILL_AT is "before ENDING", "after ENDING" (a file whose name ends so gets that name) or "removing
/// ENDING".
namespace {

bool EndsWith(const char* text, const char* ending) {
  const auto length = strlen(text);
  const auto ending_length = strlen(ending);
  return length >= ending_length && strcmp(text + length - ending_length, ending) == 0;
}

void KillIf(const char* moment, const char* file) {
  const char* const wanted = getenv("KILL_AT");
  const auto length = strlen(moment);
  if (wanted == nullptr || strncmp(wanted, moment, length) != 0) return;
  if (EndsWith(file, wanted + length)) kill(getpid(), SIGKILL);
}

using TwoNames = int (*)(const char*, const char*);

int Rename(const char* function, const char* from, const char* to) {
  const auto original = reinterpret_cast<TwoNames>(dlsym(RTLD_NEXT, function));
  KillIf("before ", to);
  const int result = original(from, to);
  if (result == 0) KillIf("after ", to);
  return result;
}

}  // namespace

extern "C" int rename(const char* from, const char* to) noexcept {
  return Rename("rename", from, to);
}

extern "C" int link(const char* from, const char* to) noexcept {
  return Rename("link", from, to);
}

extern "C" int unlink(const char* file) noexcept {
  KillIf("removing ", file);
  return reinterpret_cast<int (*)(const char*)>(dlsym(RTLD_NEXT, "unlink"))(file);
}
