#include "wordprocessor/printing/merge_clashes.h"

#include <sys/stat.h>

#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "wordprocessor/document/template_file.h"

namespace wordprocessor {
namespace {

using platform::Failure;

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as the system follows at most

std::optional<std::string> FileKey(const fs::path& file) {
  struct stat known = {};
  if (stat(file.c_str(), &known) != 0) return std::nullopt;
  return std::to_string(known.st_dev) + ":" + std::to_string(known.st_ino);
}

/// One name of one folder, however the path is spelt.
std::string PlaceKey(const fs::path& file) {
  const auto whole = fs::absolute(file);
  const auto folder = FileKey(whole.parent_path());
  return folder ? *folder + "/" + whole.filename().string() : whole.lexically_normal().string();
}

/// Where a link to a file leads, also to one that is not there yet.
fs::path Followed(fs::path file) {
  std::error_code error;
  for (int links = 0; links < kMostLinks && fs::is_symlink(file, error); ++links) {
    file = file.parent_path() / fs::read_symlink(file, error);
  }
  return file;
}

class MergeClashFinder {
 public:
  explicit MergeClashFinder(const std::vector<MergeJob>& jobs) {
    for (const auto& job : jobs) {
      NoteInput(job.context_file, job.number);
      if (templates_.insert(job.template_file).second) NoteTemplate(job);
    }
  }

  /// Why the job may not be done with those before it; "" where it may.
  std::string Reason(const MergeJob& job) {
    const auto place = PlaceKey(Followed(job.output));
    const auto begins = "The letter \"" + job.output.string() + "\" ";
    const auto ends = " Give it another name.";
    if (const auto reader = ReaderOf(job.output)) {
      if (*reader == job.number) return begins + "would overwrite what it is made of." + ends;
      return begins + "would overwrite what line " + std::to_string(*reader) + " reads." + ends;
    }
    const auto [maker, is_first] = makers_.emplace(place, job.number);
    if (is_first) return {};
    return begins + "is made by line " + std::to_string(maker->second) + " too." + ends;
  }

 private:
  void NoteTemplate(const MergeJob& job) {
    NoteInput(job.template_file, job.number);
    const auto common = CommonTemplateBeside(job.template_file);
    if (!common.empty()) NoteInput(common, job.number);
  }

  void NoteInput(const fs::path& file, int number) {
    places_read_.emplace(PlaceKey(file), number);
    if (const auto key = FileKey(file)) files_read_.emplace(*key, number);
  }

  std::optional<int> ReaderOf(const fs::path& output) const {
    if (const auto found = places_read_.find(PlaceKey(output)); found != places_read_.end())
      return found->second;
    const auto key = FileKey(output);
    const auto found = key ? files_read_.find(*key) : files_read_.end();
    return found == files_read_.end() ? std::nullopt : std::optional(found->second);
  }

  std::set<fs::path> templates_;
  std::unordered_map<std::string, int> places_read_;  // first line that reads it, as in the others
  std::unordered_map<std::string, int> files_read_;
  std::unordered_map<std::string, int> makers_;
};

}  // namespace

std::vector<MergeResult> MergeClashes(const std::vector<MergeJob>& jobs) {
  MergeClashFinder finder(jobs);
  std::vector<MergeResult> clashes;
  for (const auto& job : jobs) {
    const auto reason = finder.Reason(job);
    if (reason.empty()) continue;
    clashes.push_back({job.number, job.output, {}, Failure(Failure::Kind::kRefused, reason)});
  }
  return clashes;
}

}  // namespace wordprocessor
