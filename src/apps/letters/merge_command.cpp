#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "platform/failure.h"
#include "wordprocessor/merge_jobs.h"

namespace apps {
namespace {

using wordprocessor::MergeResult;

std::string ReadWhole(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "The job list \"" + file + "\" cannot be read. Check its name and rights.");
  }
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

/// Tells how each job ended, and remembers whether one failed.
class Teller {
 public:
  explicit Teller(bool with_lines) : with_lines_(with_lines) {}

  void Tell(const MergeResult& result) {
    const auto line = with_lines_ ? "Line " + std::to_string(result.number) + ": " : std::string();
    if (result.failure) {
      failed_ = true;
      std::cerr << line << result.failure->description() << '\n';
      return;
    }
    std::cout << result.output.string() << '\n';
    if (result.not_filled.empty()) return;
    std::cerr << line << "These bookmarks have no field:";
    for (const auto& name : result.not_filled) std::cerr << ' ' << name;
    std::cerr << '\n';
  }
  bool failed() const { return failed_; }

 private:
  const bool with_lines_;
  bool failed_ = false;
};

}  // namespace

int RunMerge(const QStringList& words) {
  CommandLine line("merge", "Merges a template and a data context into a .docx or .pdf file",
                   "TEMPLATE.docx CONTEXT.xml OUT");
  line.Option("jobs", "FILE", "Many at once, one a line: TEMPLATE, CONTEXT and OUT, parted by tabs.")
      .Option("workers", "N", "Layout processes for PDF files (default: 1).");
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
    list = wordprocessor::ReadMergeJobs(ReadWhole(line.Value("jobs")));
  } else {
    list.jobs.push_back({1, line.Argument(0), line.Argument(1), line.Argument(2)});
  }
  auto settings = wordprocessor::LayoutSettings::ForThisProgram();
  settings.workers = *workers;
  wordprocessor::LayoutPool pool(std::move(settings));
  Teller teller(has_jobs);
  for (const auto& bad_line : list.bad_lines) teller.Tell(bad_line);
  wordprocessor::RunMergeJobs(list.jobs, pool, [&teller](const MergeResult& result) { teller.Tell(result); });
  return teller.failed() ? kRefused : kDone;
}

}  // namespace apps
