#include "apps/night/night_press.h"

#include <exception>
#include <utility>

#include "composition/paragraph_marks.h"
#include "platform/text.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/document/template_file.h"

namespace apps {

using platform::Failure;

NightPress::NightPress(wordprocessor::LayoutSettings settings) : pool_(std::move(settings)) {}

void NightPress::Begin(server::NightLetter letter, const std::filesystem::path& template_file,
                       const std::filesystem::path& pdf) {
  PressedLetter pressed{std::move(letter), template_file.filename().string()};
  ++under_way_;
  try {
    const auto context = wordprocessor::DataContext::Parse(composition::MergeText(pressed.letter.context));
    auto document = templates_.Open(template_file, wordprocessor::CommonTemplateBeside(template_file));
    const auto not_filled = document.MergeBookmarks(context);
    if (!not_filled.empty()) {
      throw Failure(Failure::Kind::kRefused,
                    "The template " + platform::Quoted(pressed.template_file) + " asks for " +
                        platform::Quoted(not_filled.front()) +
                        ", which the letter's data do not have. Tell the administrator.");
    }
    pool_.Layout({pressed.template_file, document.Bytes(), pdf,
                  [this, pressed](const std::optional<Failure>& failure) mutable {
                    pressed.failure = failure;
                    Done(std::move(pressed));
                  }});
    return;
  } catch (const Failure& failure) {
    pressed.failure = failure;
  } catch (const std::exception& failure) {
    pressed.failure = Failure(Failure::Kind::kInternal, failure.what());
  }
  Done(std::move(pressed));
}

void NightPress::Done(PressedLetter letter) {
  const std::lock_guard lock(mutex_);
  done_.push_back(std::move(letter));
  one_is_done_.notify_one();
}

std::optional<PressedLetter> NightPress::Next(std::size_t allowed) {
  std::unique_lock lock(mutex_);
  if (under_way_ > allowed) one_is_done_.wait(lock, [this] { return !done_.empty(); });
  if (done_.empty()) return std::nullopt;
  auto letter = std::move(done_.front());
  done_.pop_front();
  --under_way_;
  return letter;
}

}  // namespace apps
