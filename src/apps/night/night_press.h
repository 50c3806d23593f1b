#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "platform/failure.h"
#include "server/batch/night_letters.h"
#include "wordprocessor/document/template_cache.h"
#include "wordprocessor/layout/pool.h"

namespace apps {

/// A letter of a run that has been pressed, or has not.
struct PressedLetter {
  server::NightLetter letter;
  std::string template_file;
  std::optional<platform::Failure> failure = std::nullopt;  ///< then there is no PDF
};

/// Merges the letters of a run and has them laid out, as the screen does, several at a time. One thread.
class NightPress {
 public:
  explicit NightPress(wordprocessor::LayoutSettings settings);

  /// Begins a letter; its PDF appears whole, or not at all. What goes wrong comes back from Next.
  void Begin(server::NightLetter letter, const std::filesystem::path& template_file,
             const std::filesystem::path& pdf);
  /// A letter that is done, in the order in which they get done; waits for one where more than `allowed` are
  /// under way.
  std::optional<PressedLetter> Next(std::size_t allowed);
  /// How many letters should be under way, so that no layout process waits.
  std::size_t Enough() const { return 2 * static_cast<std::size_t>(pool_.workers()) + 2; }

 private:
  void Done(PressedLetter letter);

  wordprocessor::TemplateCache templates_;
  std::size_t under_way_ = 0;
  std::mutex mutex_;
  std::condition_variable one_is_done_;
  std::deque<PressedLetter> done_;  // guarded by mutex_
  wordprocessor::LayoutPool pool_;  // last: its threads use all of the above
};

}  // namespace apps
