#pragma once

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <string>

#include "wordprocessor/layout/folder.h"
#include "wordprocessor/layout/pool.h"

namespace wordprocessor {

/// The pages of one merged letter, being laid out or done; a PDF that is removed with the last one who knows
/// it.
class LetterPages {
 public:
  /// Starts the layout of `document`, the bytes of a DOCX file. `done` is called once, from a thread of the
  /// pool. Throws Failure where there is no room for the private folder.
  static std::shared_ptr<LetterPages> LayOut(LayoutPool& pool, const std::string& name, std::string document,
                                             std::function<void()> done);

  explicit LetterPages(const std::filesystem::path& work_folder);

  /// Waits for the pages. Throws the Failure of the layout. Any thread.
  const std::filesystem::path& Pdf() const {
    laid_out_.get();
    return pdf_;
  }
  bool IsDone() const { return laid_out_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }

 private:
  const LayoutFolder folder_;
  const std::filesystem::path pdf_;
  std::promise<void> outcome_;
  const std::shared_future<void> laid_out_;
};

}  // namespace wordprocessor
