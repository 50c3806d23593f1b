#pragma once

#include <cstddef>

#include "platform/controls/label.h"
#include "platform/controls/option_button.h"
#include "workspace/pages/grid_columns.h"
#include "workspace/pages/letter_page.h"

namespace workspace {

/// "&Generate Letter (s)": a letter is requested for a customer.
struct CorrespondencePage : LetterPage {
  // Options of OptOnline.
  static constexpr std::size_t kCreateLetter = 0;
  static constexpr std::size_t kClear = 1;
  static constexpr std::size_t kViewLetter = 2;
  static constexpr std::size_t kPrintLetter = 3;

  explicit CorrespondencePage(const platform::Services& services) : LetterPage(services) {
    sdgGrid.columns = ColumnsOf(kCorrespondenceColumns);
  }

  platform::Frame letter_action{"Letter Action"};
  platform::OptionGroup<4> OptOnline{{"Create Letter", "Clear", "View Letter", "Print Letter"}};
};

}  // namespace workspace
