#include <benchmark/benchmark.h>

#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/merge_template.h"
#include "wordprocessor/layout/pool.h"
#include "wordprocessor/printing/merge_jobs.h"

/// Letters from template and context to PDF with one warm process and with two, beside the office alone on
/// the same merged files. Every round measures all three, so that what else the machine does strikes them
/// alike; the figures are the medians of the rounds. "one/bare" is what our side costs; "two/bare" what two
/// cores save.
namespace {

using wordprocessor::LayoutPool;
using wordprocessor::LayoutSettings;
using wordprocessor::MergeJob;
using wordprocessor::MergeResult;

constexpr int kLetters = 40;
constexpr int kBookmarks = 40;
constexpr const char* kOffice = "/usr/lib/libreoffice/program";

class Workplace {
 public:
  Workplace() {
    auto name = (std::filesystem::temp_directory_path() / "layout-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
    const auto letter = MakeMergeTemplate(kBookmarks);
    std::ofstream(folder_ / "template.docx", std::ios::binary) << letter.docx;
    std::ofstream(folder_ / "context.xml", std::ios::binary) << letter.context;
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace() { std::filesystem::remove_all(folder_); }

  const std::filesystem::path& folder() const { return folder_; }

  std::vector<MergeJob> Jobs(const char* ending) const {
    std::vector<MergeJob> jobs;
    for (int number = 1; number <= kLetters; ++number) {
      jobs.push_back({number, folder_ / "template.docx", folder_ / "context.xml",
                      folder_ / (std::to_string(number) + ending)});
    }
    return jobs;
  }

 private:
  std::filesystem::path folder_;
};

void Run(LayoutPool& pool, const std::vector<MergeJob>& jobs) {
  RunMergeJobs(jobs, pool, {.allow_unfilled = true, .stop = {}}, [](const MergeResult& result) {
    if (result.failure) throw std::runtime_error(result.failure->description());
  });
}

double MillisecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The office alone, in a process of its own.
double Bare(const Workplace& workplace) {
  std::filesystem::remove_all(workplace.folder() / "bare-profile");
  const auto program = LayoutSettings::ForThisProgram().worker_program.parent_path() / "layout_yardstick";
  const auto command =
      program.string() + " " + kOffice + " " + workplace.folder().string() + " " + std::to_string(kLetters);
  FILE* const output = popen(command.c_str(), "r");
  double milliseconds = 0;
  const bool told = fscanf(output, "%lf", &milliseconds) == 1;
  if (pclose(output) != 0 || !told) throw std::runtime_error("the office alone did not come up");
  return milliseconds;
}

class Rounds {
 public:
  void Add(double milliseconds) { taken_.push_back(milliseconds); }
  /// Of one letter.
  double Median() {
    std::ranges::sort(taken_);
    return taken_[taken_.size() / 2] / kLetters;
  }

 private:
  std::vector<double> taken_;
};

void LettersToPdf(benchmark::State& state) {
  const Workplace workplace;
  auto settings = LayoutSettings::ForThisProgram();
  LayoutPool one(settings);
  settings.workers = 2;
  LayoutPool two(settings);
  const auto letters = workplace.Jobs(".pdf");
  Run(one, workplace.Jobs(".docx"));
  Run(one, letters);
  Run(two, letters);
  Rounds bare_rounds, one_rounds, two_rounds;
  for (auto _ : state) {
    bare_rounds.Add(Bare(workplace));
    one_rounds.Add(MillisecondsOf([&] { Run(one, letters); }));
    two_rounds.Add(MillisecondsOf([&] { Run(two, letters); }));
  }
  const double bare = bare_rounds.Median();
  state.counters["bare_ms"] = bare;
  state.counters["one_ms"] = one_rounds.Median();
  state.counters["two_ms"] = two_rounds.Median();
  state.counters["one/bare"] = one_rounds.Median() / bare;
  state.counters["two/bare"] = two_rounds.Median() / bare;
}
BENCHMARK(LettersToPdf)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

/// From nothing to the first page: process, profile, office, letter.
void FirstLetter(benchmark::State& state) {
  const Workplace workplace;
  auto jobs = workplace.Jobs(".pdf");
  jobs.resize(1);
  for (auto _ : state) {
    LayoutPool pool(LayoutSettings::ForThisProgram());
    Run(pool, jobs);
  }
}
BENCHMARK(FirstLetter)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
