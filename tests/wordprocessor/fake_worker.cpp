#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/office/protocol.h"

// A layout process that behaves as badly as the test asks: the document's bytes say what to do with it, the
// program's own name how to come up. Good pages say which process wrote them.

using namespace wordprocessor;

namespace {

// A reader of PDF files looks over what stands before.
constexpr auto kTwoPages = R"(
%PDF-1.4
1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj
2 0 obj <</Type /Pages /Kids [3 0 R 4 0 R] /Count 2>> endobj
3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 612 792]>> endobj
4 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 612 792]>> endobj
trailer <</Root 1 0 R>>
)";

constexpr std::uint64_t kSmall = 1000;
constexpr std::string_view kBreakOnce = "break once ";
constexpr std::uint64_t kFat = 100'000'000;

void Report(LayoutReport::Kind kind, std::uint64_t id, std::uint64_t resident_kib, const char* why = "") {
  WriteAll(STDOUT_FILENO, LineOf(LayoutReport{kind, id, resident_kib, why}));
}

[[noreturn]] void Grow() {
  for (std::vector<std::string> hoard;; usleep(1000)) hoard.emplace_back(8 * 1024 * 1024, 'x');
}

[[noreturn]] void Hang() {
  for (;;) pause();
}

/// "hang FILE" makes the file first, so that the test knows of it.
[[noreturn]] void HangVisibly(const std::string& command) {
  std::ofstream(command.substr(command.find(' ') + 1)) << "hangs";
  Hang();
}

std::string Content(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The file says that it has happened.
void BreakOnce(const std::string& file) {
  if (std::ifstream(file)) return;
  std::ofstream(file) << "once";
  abort();
}

void Obey(const LayoutOrder& order) {
  const auto command = Content(order.document);
  if (command == "break") abort();
  if (command.starts_with(kBreakOnce)) BreakOnce(command.substr(kBreakOnce.size()));
  if (command == "end") _exit(3);
  if (command == "hang") Hang();
  if (command.starts_with("hang ")) HangVisibly(command);
  if (command == "grow") Grow();
  if (command == "nonsense") WriteAll(STDOUT_FILENO, "It was a dark and stormy night.\n");
  if (command == "chatter") WriteAll(STDOUT_FILENO, std::string(200'000, 'x'));
  if (command == "wrong number") return Report(LayoutReport::Kind::kDone, order.id + 7, kSmall);
  if (command == "refuse") return Report(LayoutReport::Kind::kFailed, order.id, kSmall, "too many pages");
  std::ofstream(order.pdf) << "pages by " << getpid() << kTwoPages;
  Report(LayoutReport::Kind::kDone, order.id, command == "fat" ? kFat : kSmall);
}

/// Ready the first time, never again; the file NAME.again says that it was tried.
void BeReadyOnce(const std::string& name) {
  if (!std::ifstream(name + ".once")) {
    std::ofstream(name + ".once") << "ready";
    return;
  }
  std::ofstream(name + ".again") << "not ready";
  Hang();
}

void ComeUp(const std::string& name) {
  if (name.ends_with("ready_once")) BeReadyOnce(name);
  if (name.ends_with("never_ready")) Hang();
  if (name.ends_with("dead_on_arrival")) _exit(9);
  if (name.ends_with("broken")) {
    Report(LayoutReport::Kind::kBroken, 0, 0, "No office is installed. Install one.");
    _exit(1);
  }
  Report(LayoutReport::Kind::kReady, 0, 0);
}

}  // namespace

int main(int, char** argv) {
  ComeUp(argv[0]);
  LineReader orders(STDIN_FILENO);
  while (orders.Fill()) {
    while (const auto line = orders.TakeLine()) Obey(ParseOrder(*line).value());
  }
}
