#include "wordprocessor/merge_jobs.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/data_context.h"
#include "wordprocessor/docx_file.h"
#include "wordprocessor/print_template.h"
#include "wordprocessor/template_cache.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kFields = 3;

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

bool IsJob(const std::vector<std::string>& fields) {
  if (fields.size() != kFields) return false;
  for (const auto& field : fields) {
    if (field.empty()) return false;
  }
  return true;
}

Failure BadLine(int number) {
  return {Failure::Kind::kRefused,
          "Line " + std::to_string(number) +
              " is no job. Write the template, the data context and the letter to make, "
              "parted by tabs."};
}

bool IsPdf(const std::filesystem::path& output) {
  const auto ending = platform::LowerCase(output.extension().string());
  if (ending == ".pdf") return true;
  if (ending == ".docx") return false;
  throw Failure(Failure::Kind::kRefused, "A letter is written as \".docx\" or \".pdf\"; the name \"" +
                                             output.string() +
                                             "\" is neither. Give the file another ending.");
}

/// The jobs under way, and the results that nobody has been told yet.
class MergeRun {
 public:
  MergeRun(LayoutPool& pool, const std::function<void(const MergeResult&)>& on_result)
      : pool_(pool),
        on_result_(on_result),
        most_under_way_(2 * static_cast<std::size_t>(pool.workers()) + 2) {}

  void Do(const MergeJob& job) {
    TellUntilUnderWay(most_under_way_ - 1);
    MergeResult result{job.number, job.output};
    try {
      Start(job, result);
    } catch (const Failure& failure) {
      result.failure = failure;
      on_result_(result);
    } catch (const std::exception& failure) {
      result.failure = Failure(Failure::Kind::kInternal, failure.what());
      on_result_(result);
    }
  }

  void Finish() { TellUntilUnderWay(0); }

 private:
  void Start(const MergeJob& job, MergeResult& result) {
    const bool pdf = IsPdf(job.output);
    const auto context = platform::While("reading \"" + job.context_file.string() + "\"", [&job] {
      return DataContext::Parse(ReadFile(job.context_file).bytes);
    });
    auto document = templates_.Open(job.template_file, CommonTemplateBeside(job.template_file));
    result.not_filled = document.MergeBookmarks(context);
    if (pdf) return LayOut(job, document.Bytes(), result);
    document.Save(job.output);
    on_result_(result);
  }

  void LayOut(const MergeJob& job, std::string document, const MergeResult& result) {
    ++under_way_;
    pool_.Layout({job.template_file.filename().string(), std::move(document), job.output,
                  [this, result](const std::optional<Failure>& failure) {
                    const std::lock_guard lock(mutex_);
                    done_.push_back(result);
                    done_.back().failure = failure;
                    one_is_done_.notify_one();
                  }});
  }

  /// Tells what is done; waits while more than `allowed` are under way.
  void TellUntilUnderWay(std::size_t allowed) {
    while (const auto result = NextDone(/*wait=*/under_way_ > allowed)) {
      --under_way_;
      on_result_(*result);
    }
  }

  std::optional<MergeResult> NextDone(bool wait) {
    std::unique_lock lock(mutex_);
    if (wait) one_is_done_.wait(lock, [this] { return !done_.empty(); });
    if (done_.empty()) return std::nullopt;
    auto result = std::move(done_.front());
    done_.pop_front();
    return result;
  }

  LayoutPool& pool_;
  const std::function<void(const MergeResult&)>& on_result_;
  const std::size_t most_under_way_;
  TemplateCache templates_;
  std::size_t under_way_ = 0;

  std::mutex mutex_;
  std::condition_variable one_is_done_;
  std::deque<MergeResult> done_;  // guarded by mutex_
};

}  // namespace

MergeJobList ReadMergeJobs(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  MergeJobList list;
  int number = 0;
  for (auto& line : Split(text, '\n')) {
    ++number;
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty()) continue;
    auto fields = Split(line, '\t');
    if (IsJob(fields)) {
      list.jobs.push_back({number, fields[0], fields[1], fields[2]});
    } else {
      list.bad_lines.push_back(
          {.number = number, .output = {}, .not_filled = {}, .failure = BadLine(number)});
    }
  }
  return list;
}

void RunMergeJobs(const std::vector<MergeJob>& jobs, LayoutPool& pool,
                  const std::function<void(const MergeResult&)>& on_result) {
  MergeRun run(pool, on_result);
  for (const auto& job : jobs) run.Do(job);
  run.Finish();
}

}  // namespace wordprocessor
