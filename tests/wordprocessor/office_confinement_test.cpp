#include "tests/support/temporary_folder.h"
#include "wordprocessor/office/confinement.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>

#include "platform/descriptor.h"
#include "platform/whole_file.h"

namespace wordprocessor {
namespace {

bool Opens(const std::filesystem::path& file, int how) {
  return static_cast<bool>(platform::Descriptor(open(file.c_str(), how | O_CLOEXEC, 0666)));
}

/// Whether `work` answers true in a process of its own, which has given up what the layout process gives up.
bool InConfinement(const std::filesystem::path& own_folder, const std::function<bool()>& work) {
  const pid_t process = fork();
  if (process == 0) {
    ConfineFiles(own_folder, "/usr/lib/libreoffice/program");
    ConfineCalls();
    _exit(work() ? 0 : 1);
  }
  int status = -1;
  waitpid(process, &status, 0);
  return status == 0;
}

TEST(OfficeConfinement, LeavesAProcessItsOwnFolderTheFontsAndNothingElse) {
  if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 1) {
    GTEST_SKIP() << "this kernel has no Landlock";
  }
  const tests::TemporaryFolder home;
  const auto own = home / "own";
  std::filesystem::create_directory(own);
  platform::WriteScratchFile(home / "secret", "secret");
  const struct {
    const char* what;
    bool allowed;
    std::function<bool()> work;
  } cases[] = {
      {"writes its folder", true, [&] { return Opens(own / "pages", O_WRONLY | O_CREAT); }},
      {"reads the system's programs", true, [] { return Opens("/usr/bin/env", O_RDONLY); }},
      {"reads a neighbour's file", false, [&] { return Opens(home / "secret", O_RDONLY); }},
      {"reads the list of users", false, [] { return Opens("/etc/passwd", O_RDONLY); }},
      {"writes beside its folder", false, [&] { return Opens(home / "pages", O_WRONLY | O_CREAT); }},
      {"reaches out by a link", false,
       [&] {
         return symlink((home / "secret").c_str(), (own / "l").c_str()) == 0 && Opens(own / "l", O_RDONLY);
       }},
      {"opens a socket", false, [] { return socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
      {"opens a local socket", false, [] { return socket(AF_UNIX, SOCK_STREAM, 0) >= 0; }},
      {"runs a program", false, [] { return execl("/bin/true", "true", nullptr) == 0; }},
      {"signals its parent", false, [] { return kill(getppid(), 0) == 0; }},
  };
  for (const auto& [what, allowed, work] : cases) EXPECT_EQ(InConfinement(own, work), allowed) << what;
}

}  // namespace
}  // namespace wordprocessor
