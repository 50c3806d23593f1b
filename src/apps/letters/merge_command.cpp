#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string_view>
#include <thread>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/interruption.h"
#include "apps/letters/standard_streams.h"
#include "platform/failure.h"
#include "wordprocessor/printing/merge_clashes.h"
#include "wordprocessor/printing/merge_jobs.h"

namespace apps {
namespace {

using wordprocessor::MergeResult;

constexpr std::string_view kStandardInput = "-";

std::string ReadJobList(const std::string& file) {
  std::ostringstream bytes;
  if (file == kStandardInput) {
    bytes << std::cin.rdbuf();
    return bytes.str();
  }
  std::ifstream in(file, std::ios::binary);
  if (!in || std::filesystem::is_directory(file)) {
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "The job list \"" + file + "\" cannot be read. Check its name and rights.");
  }
  bytes << in.rdbuf();
  return bytes.str();
}

/// Tells how each job ended, and keeps count.
class Teller {
 public:
  explicit Teller(bool with_lines) : with_lines_(with_lines) {}

  void Tell(const MergeResult& result) {
    const auto line = with_lines_ ? "Line " + std::to_string(result.number) + ": " : std::string();
    if (result.failure) {
      ++failed_;
      has_refused_unfilled_ = has_refused_unfilled_ || !result.not_filled.empty();
      std::cerr << line << result.failure->description() << '\n';
      return;
    }
    ++made_;
    std::cout << result.output.string() << std::endl;  // told even where this program is killed next
    if (result.not_filled.empty()) return;
    Notices() << line << "These bookmarks have no field:";
    for (const auto& name : result.not_filled) Notices() << ' ' << name;
    Notices() << '\n';
  }
  int made() const { return made_; }
  int failed() const { return failed_; }
  bool has_refused_unfilled() const { return has_refused_unfilled_; }

 private:
  const bool with_lines_;
  int made_ = 0;
  int failed_ = 0;
  bool has_refused_unfilled_ = false;
};

/// What is left undone when a signal ended the run; `begun` jobs were begun.
void TellInterruption(const std::vector<wordprocessor::MergeJob>& jobs, std::size_t begun,
                      const Teller& teller) {
  std::cerr << "Ended by a signal (" << strsignal(Interruption::Signal()) << "): " << teller.made()
            << " letters are made and named on standard output; " << teller.failed() << " failed; "
            << jobs.size() - begun << " were not begun, those of the lines " << jobs[begun].number << " to "
            << jobs.back().number << ".\n";
}

/// Tells the jobs that would overwrite something; whether there are any.
bool TellClashes(const std::vector<wordprocessor::MergeJob>& jobs, Teller& teller) {
  const auto clashes = wordprocessor::MergeClashes(jobs);
  for (const auto& clash : clashes) teller.Tell(clash);
  if (!clashes.empty()) std::cerr << "Nothing was made.\n";
  return !clashes.empty();
}

/// Returns the exit status.
int MergeAll(const wordprocessor::MergeJobList& list, const CommandLine& line, int workers) {
  const bool is_list = line.IsSet("jobs");
  Teller teller(is_list);
  for (const auto& bad_line : list.bad_lines) teller.Tell(bad_line);
  if (TellClashes(list.jobs, teller)) return kRefused;
  std::optional<Interruption> interruption;
  if (is_list) interruption.emplace();
  const wordprocessor::MergeWishes wishes = {.allow_unfilled = line.IsSet("allow-unfilled"),
                                             .stop = [] { return Interruption::Signal() != 0; }};
  auto settings = wordprocessor::LayoutSettings::ForThisProgram();
  settings.workers = workers;
  wordprocessor::LayoutPool pool(std::move(settings));
  const auto begun = wordprocessor::RunMergeJobs(
      list.jobs, pool, wishes, [&teller](const MergeResult& result) { teller.Tell(result); });
  if (teller.has_refused_unfilled()) {
    std::cerr << "With --allow-unfilled such letters are made, with the template's own wording there.\n";
  }
  if (begun < list.jobs.size()) {
    TellInterruption(list.jobs, begun, teller);
    return kInterrupted;
  }
  return teller.failed() > 0 ? kRefused : kDone;
}

}  // namespace

int RunMerge(const QStringList& words) {
  CommandLine line("merge", "Merges a template and a data context into a .docx or .pdf file",
                   "TEMPLATE.docx CONTEXT.xml OUT");
  line.Option(
          "jobs", "FILE",
          "Many at once, one a line: TEMPLATE, CONTEXT and OUT, parted by tabs; \"-\" reads the list from "
          "standard input. Blank lines and those that begin with \"#\" are passed over. Where two jobs "
          "have the same OUT, or an OUT is a file that a job reads, nothing is made. Ctrl+C ends the run "
          "after the letters in hand and says which are not made; once more ends it at once.")
      .Option(
          "allow-unfilled", "",
          "Makes letters though the context does not fill all their bookmarks; without it they are refused.")
      .Option("workers", "N", "Layout processes for PDF files, at most one a core (default: 1).");
  if (const auto status = line.Parse(words, 0, 3)) return *status;
  const bool has_jobs = line.IsSet("jobs");
  if (line.ArgumentCount() != (has_jobs ? 0 : 3)) {
    return line.WrongUsage("Name TEMPLATE, CONTEXT and OUT, or --jobs FILE.");
  }
  const auto workers = line.IsSet("workers") ? line.Number("workers", 1) : 1;
  const auto most = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  if (!workers || *workers > most) {
    return line.WrongUsage("--workers takes a number from 1 to " + std::to_string(most) + ", not \"" +
                           line.Value("workers") + "\".");
  }

  wordprocessor::MergeJobList list;
  if (has_jobs) {
    list = wordprocessor::ReadMergeJobs(ReadJobList(line.Value("jobs")));
  } else {
    list.jobs.push_back({1, line.Argument(0), line.Argument(1), line.Argument(2)});
  }
  return MergeAll(list, line, *workers);
}

}  // namespace apps
