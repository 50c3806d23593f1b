#include "postal/program_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <thread>

#include "platform/child_process.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace postal {
namespace {

using platform::Failure;

constexpr auto kTimeToEnd = std::chrono::milliseconds(500);
constexpr std::size_t kWordsKept = 500;
/// How often is looked whether to go on.
constexpr std::int64_t kLongestWait = 50;  // milliseconds

void Close(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

/// Two ends that no other program inherits. Sockets, because writing to a pipe whose reader has gone would
/// send this program a signal.
struct Ends {
  int ours = -1;
  int theirs = -1;

  Ends() = default;
  Ends(const Ends&) = delete;
  Ends& operator=(const Ends&) = delete;
  ~Ends() {
    Close(ours);
    Close(theirs);
  }
  bool Open() {
    std::array<int, 2> ends = {};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return false;
    ours = ends[0];
    theirs = ends[1];
    return fcntl(ours, F_SETFL, O_NONBLOCK) == 0;
  }
  int TakeOurs() { return std::exchange(ours, -1); }
};

/// Whether the process has ended; it is not reaped, so that its number stays its own.
bool HasEnded(pid_t process) {
  siginfo_t info = {};
  return waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid == process;
}

}  // namespace

ProgramProcess::ProgramProcess(const std::filesystem::path& program)
    : name_(platform::Quoted(program.string())) {
  Ends questions;
  Ends answers;
  Ends errors;
  int error = EMFILE;
  if (questions.Open() && answers.Open() && errors.Open())
    error = platform::ChildProcess{{program.string()}, questions.theirs, answers.theirs, errors.theirs}.Start(
        process_);
  if (error != 0) {
    throw Failure(Failure::Kind::kUnavailable,
                  "The program " + name_ +
                      " that verifies addresses does not start: " + std::generic_category().message(error) +
                      ". Correct [AddressVerification] Program in server.ini, and start the programs again.");
  }
  questions_ = questions.TakeOurs();
  answers_ = answers.TakeOurs();
  errors_ = errors.TakeOurs();
  shutdown(answers_, SHUT_WR);
  shutdown(errors_, SHUT_WR);
}

ProgramProcess::~ProgramProcess() {
  Close(questions_);
  const auto deadline = std::chrono::steady_clock::now() + kTimeToEnd;
  while (!HasEnded(process_) && std::chrono::steady_clock::now() < deadline)
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  kill(-process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
  Close(answers_);
  Close(errors_);
}

bool ProgramProcess::HasSpokenUnasked() {
  ReadErrors();
  ReadAnswers();
  return is_closed_ || !arrived_.empty();
}

std::string ProgramProcess::Ask(std::string_view line, Time deadline, const std::stop_token& ending) {
  std::string question(line);
  question += '\n';
  for (std::size_t done = 0; done < question.size();) {
    const auto sent = send(questions_, question.data() + done, question.size() - done, MSG_NOSIGNAL);
    if (sent > 0) {
      done += static_cast<std::size_t>(sent);
    } else if (errno == EAGAIN) {
      if (is_closed_) Fail("has ended without an answer.");
      if (arrived_.size() > kLongestLine) Fail("writes, and does not read what it is asked.");
      Await(true, deadline, ending);
    } else if (errno != EINTR) {
      Fail("has ended.");
    }
  }
  for (;;) {
    const auto end = arrived_.find('\n');
    if (end != std::string::npos) {
      auto answer = arrived_.substr(0, end);
      arrived_.erase(0, end + 1);
      return answer;
    }
    if (arrived_.size() > kLongestLine)
      Fail("answers a line of more than " + std::to_string(kLongestLine) + " characters.");
    if (is_closed_) Fail("has ended without an answer.");
    Await(false, deadline, ending);
  }
}

void ProgramProcess::Fail(const std::string& what) const {
  throw Failure(Failure::Kind::kUnavailable,
                "The program " + name_ + " that verifies addresses " + what + LastWords());
}

void ProgramProcess::Await(bool is_writing, Time deadline, const std::stop_token& ending) {
  if (ending.stop_requested())
    throw Failure(Failure::Kind::kUnavailable,
                  "The address was not verified, because the program was closed. Nothing was stored.");
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
  if (left <= 0)
    throw Failure(Failure::Kind::kTimedOut,
                  "The program " + name_ + " that verifies addresses did not answer in time." + LastWords());
  std::array<pollfd, 3> ends = {{{is_closed_ ? -1 : answers_, POLLIN, 0},
                                 {errors_, POLLIN, 0},
                                 {is_writing ? questions_ : -1, POLLOUT, 0}}};
  poll(ends.data(), ends.size(), static_cast<int>(std::min<std::int64_t>(left, kLongestWait)));
  ReadErrors();
  ReadAnswers();
}

void ProgramProcess::ReadErrors() {
  std::array<char, 4096> bytes = {};
  // Not for ever: a program that never stops talking is as slow as one that never begins.
  for (int times = 0; errors_ >= 0 && times < 16; ++times) {
    const auto count = recv(errors_, bytes.data(), bytes.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) return Close(errors_);
    said_.append(bytes.data(), static_cast<std::size_t>(count));
    if (said_.size() > kWordsKept) said_.erase(0, said_.size() - kWordsKept);
  }
}

void ProgramProcess::ReadAnswers() {
  std::array<char, 4096> bytes = {};
  while (!is_closed_ && arrived_.size() <= kLongestLine) {
    const auto count = recv(answers_, bytes.data(), bytes.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count <= 0) {
      is_closed_ = true;
      return;
    }
    arrived_.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

std::string ProgramProcess::LastWords() const {
  std::string_view said = said_;
  while (said.ends_with('\n') || said.ends_with('\r')) said.remove_suffix(1);
  const auto line = said.substr(said.rfind('\n') + 1);
  if (line.empty()) return " Nothing was stored; look whether it works, and try again.";
  return " It said " + platform::Quoted(platform::IsValidUtf8(line) ? line : "something that is no text") +
         ". Nothing was stored; look whether it works, and try again.";
}

}  // namespace postal
