#include "wordprocessor/printing/pages.h"

#include <exception>
#include <optional>
#include <utility>

namespace wordprocessor {

LetterPages::LetterPages(const std::filesystem::path& work_folder)
    : folder_(work_folder), pdf_(folder_.path() / "letter.pdf"), laid_out_(outcome_.get_future().share()) {}

std::shared_ptr<LetterPages> LetterPages::LayOut(LayoutPool& pool, const std::string& name,
                                                 std::string document, std::function<void()> done) {
  auto pages = std::make_shared<LetterPages>(pool.work_folder());
  auto report = [pages, done = std::move(done)](const std::optional<platform::Failure>& failure) mutable {
    if (failure) {
      pages->outcome_.set_exception(std::make_exception_ptr(*failure));
    } else {
      pages->outcome_.set_value();
    }
    pages = nullptr;  // from here on the pages are theirs who asked for them
    done();
  };
  pool.Layout({name, std::move(document), pages->pdf_, std::move(report)});
  return pages;
}

}  // namespace wordprocessor
