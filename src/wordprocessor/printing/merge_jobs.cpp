#include "wordprocessor/printing/merge_jobs.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <set>
#include <utility>

#include "platform/agreed/field_names.h"
#include "platform/agreed/saved_letter.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/document/template_cache.h"
#include "wordprocessor/document/template_file.h"
#include "wordprocessor/files/package_file.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kFields = 3;
constexpr std::string_view kBlanks = " \t\r";

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
              " is no job. Write the template, the data context and the letter to make, parted by tabs."};
}

/// A blank line, or one for people only.
bool IsPassedOver(std::string_view line) {
  const auto begin = line.find_first_not_of(kBlanks);
  return begin == std::string_view::npos || line[begin] == '#';
}

std::string Joined(const std::vector<std::string>& names) {
  std::string list;
  for (const auto& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

bool IsPdf(const std::filesystem::path& output) {
  if (const auto how = platform::SavedAsOf(output.extension().string()))
    return *how == platform::SavedAs::kPdf;
  throw Failure(Failure::Kind::kRefused, "A letter is written as \".docx\" or \".pdf\"; the name \"" +
                                             output.string() +
                                             "\" is neither. Give the file another ending.");
}

/// The jobs under way, and the results that nobody has been told yet.
class MergeRun {
 public:
  MergeRun(LayoutPool& pool, const MergeWishes& wishes,
           const std::function<void(const MergeResult&)>& on_result)
      : pool_(pool),
        wishes_(wishes),
        on_result_(on_result),
        most_under_way_(2 * static_cast<std::size_t>(pool.workers()) + 2) {}

  bool IsToStop() {
    TellUntilUnderWay(most_under_way_ - 1);
    return wishes_.stop && wishes_.stop();
  }

  void Do(const MergeJob& job) {
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
    if (!result.not_filled.empty() && !wishes_.allow_unfilled) RefuseUnfilled(job, result.not_filled);
    if (pdf) return LayOut(job, document.Bytes(), result);
    document.Save(job.output);
    on_result_(result);
  }

  [[noreturn]] void RefuseUnfilled(const MergeJob& job, const std::vector<std::string>& names) {
    const auto text = FillsSome(job, names)
                          ? "Bookmarks of \"" + job.template_file.string() +
                                "\" were not filled: " + Joined(names) + ". Give the context these fields."
                          : "The context \"" + job.context_file.string() +
                                "\" fills none of the bookmarks of \"" + job.template_file.string() + "\" (" +
                                Joined(names) + "). Name the context that belongs to it.";
    throw Failure(Failure::Kind::kRefused, text);
  }

  /// Whether a bookmark of the template was filled. Optional paragraphs are theirs without the context.
  bool FillsSome(const MergeJob& job, const std::vector<std::string>& not_filled) {
    const auto blank = templates_.Open(job.template_file, CommonTemplateBeside(job.template_file));
    return std::ranges::any_of(blank.Bookmarks(), [&](const platform::DocumentBookmark& bookmark) {
      return !platform::IsParagraphField(bookmark.Name) &&
             std::ranges::find(not_filled, bookmark.Name) == not_filled.end();
    });
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
  const MergeWishes& wishes_;
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
    if (IsPassedOver(line)) continue;
    if (line.ends_with('\r')) line.pop_back();
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

std::size_t RunMergeJobs(const std::vector<MergeJob>& jobs, LayoutPool& pool, const MergeWishes& wishes,
                         const std::function<void(const MergeResult&)>& on_result) {
  std::set<std::filesystem::path> folders;
  for (const auto& job : jobs) folders.insert(job.output.has_parent_path() ? job.output.parent_path() : ".");
  for (const auto& folder : folders) platform::RemoveUnfinishedFiles(folder);
  MergeRun run(pool, wishes, on_result);
  std::size_t begun = 0;
  while (begun < jobs.size() && !run.IsToStop()) run.Do(jobs[begun++]);
  run.Finish();
  return begun;
}

}  // namespace wordprocessor
