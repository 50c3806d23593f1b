#include "wordprocessor/office/confinement.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <vector>

namespace wordprocessor {
namespace {

// Rights that came after the oldest kernel headers this builds with (Landlock ABI 2, 3 and 5).
constexpr std::uint64_t kRefer = 1ULL << 13;
constexpr std::uint64_t kTruncate = 1ULL << 14;
constexpr std::uint64_t kDeviceControl = 1ULL << 15;

constexpr std::uint64_t kRead = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kFirstAbi = (1ULL << 13) - 1;
constexpr std::uint64_t kOwn = kRead | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                               LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                               LANDLOCK_ACCESS_FS_MAKE_REG | kRefer | kTruncate;
constexpr std::uint64_t kRightsOfAFile =
    LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE | kTruncate;

struct Place {
  const char* path;
  std::uint64_t rights;
};

// Where Linux systems keep libraries, fonts, the office and its settings. Missing ones are passed over.
constexpr auto kPlaces = std::to_array<Place>({
    {"/usr", kRead},
    {"/lib", kRead},
    {"/lib64", kRead},
    {"/etc/fonts", kRead},
    {"/etc/libreoffice", kRead},
    {"/etc/ld.so.cache", kRead},
    {"/etc/localtime", kRead},
    {"/etc/papersize", kRead},
    {"/var/cache/fontconfig", kRead},
    {"/var/lib/libreoffice", kRead},
    {"/var/spool/libreoffice", kRead},
    {"/dev/null", kRead | LANDLOCK_ACCESS_FS_WRITE_FILE},
    {"/dev/urandom", kRead},
});

std::uint64_t RightsOfAbi(long abi) {
  return kFirstAbi | (abi >= 2 ? kRefer : 0) | (abi >= 3 ? kTruncate : 0) | (abi >= 5 ? kDeviceControl : 0);
}

void Allow(int ruleset, const char* path, std::uint64_t rights) {
  const int place = open(path, O_PATH | O_CLOEXEC);
  if (place < 0) return;
  struct stat kind = {};
  if (fstat(place, &kind) == 0 && !S_ISDIR(kind.st_mode)) rights &= kRightsOfAFile;
  landlock_path_beneath_attr rule = {};
  rule.allowed_access = rights;
  rule.parent_fd = place;
  syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
  close(place);
}

#if defined(__x86_64__)
constexpr std::uint32_t kThisMachine = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kThisMachine = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t kThisMachine = 0;
#endif

// x86-64 takes the numbers of its 32-bit-pointer twin from here on; nothing here is built for it.
constexpr std::uint32_t kFirstTwinCall = 0x40000000;

constexpr auto kRefusedCalls = std::to_array<std::uint32_t>({
    SYS_socket,
    SYS_io_uring_setup,  // opens sockets without calling socket
    SYS_execve,
    SYS_execveat,
    SYS_kill,
    SYS_ptrace,
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_unshare,
    SYS_mount,
    SYS_bpf,
    SYS_keyctl,
});

std::vector<sock_filter> RefusingFilter() {
  const sock_filter refuse = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES);
  std::vector<sock_filter> filter = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kThisMachine, 1, 0),
      refuse,
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, kFirstTwinCall, 0, 1),
      refuse,
  };
  for (const auto call : kRefusedCalls) {
    filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
    filter.push_back(refuse);
  }
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  return filter;
}

void SetLimit(int resource, std::uint64_t value) {
  const rlimit limit = {value, value};
  setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

}  // namespace

void TieToParent() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  SetLimit(RLIMIT_CORE, 0);
  std::ofstream("/proc/self/oom_score_adj") << "500";
}

void LimitMemory(std::uint64_t bytes) {
  if (bytes > 0) SetLimit(RLIMIT_DATA, bytes);
}

void ConfineFiles(const std::filesystem::path& own_folder, const std::filesystem::path& office_folder) {
  const auto abi = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (abi < 1) return;
  const auto handled = RightsOfAbi(abi);
  landlock_ruleset_attr attributes = {};
  attributes.handled_access_fs = handled;
  const int ruleset =
      static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, sizeof(attributes), 0));
  if (ruleset < 0) return;
  for (const auto& place : kPlaces) Allow(ruleset, place.path, place.rights & handled);
  Allow(ruleset, office_folder.parent_path().c_str(), kRead);
  Allow(ruleset, own_folder.c_str(), kOwn & handled);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  syscall(SYS_landlock_restrict_self, ruleset, 0);
  close(ruleset);
}

void ConfineCalls() {
  if (kThisMachine == 0) return;
  auto filter = RefusingFilter();
  const sock_fprog program = {static_cast<unsigned short>(std::size(filter)), filter.data()};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

}  // namespace wordprocessor
