#pragma once

#include <cstddef>

#include "platform/controls/command.h"
#include "platform/controls/date_field.h"
#include "platform/controls/label.h"
#include "platform/controls/option_button.h"
#include "platform/controls/text_field.h"
#include "workspace/pages/grid_columns.h"
#include "workspace/pages/letter_page.h"

namespace workspace {

/// "&Search Letter (s)": letters that were produced are found and acted upon.
struct TrackingPage : LetterPage {
  // Options of OptLetter.
  static constexpr std::size_t kViewLetter = 0;
  static constexpr std::size_t kSave = 1;
  static constexpr std::size_t kReturnMail = 2;
  static constexpr std::size_t kReprintLocal = 3;
  static constexpr std::size_t kResubmit = 4;
  static constexpr std::size_t kReprintBatch = 5;
  static constexpr std::size_t kViewBookmark = 6;
  // Options of OptLetterStatus.
  static constexpr std::size_t kAll = 0;
  static constexpr std::size_t kSuccessful = 1;
  static constexpr std::size_t kFailure = 2;

  explicit TrackingPage(const platform::Services& services) : LetterPage(services) {
    sdgGrid.columns = ColumnsOf(kTrackingColumns);
    OptLetter[kViewBookmark].SetVisible(false);
  }

  platform::OptionGroup<3> OptLetterStatus{{"All", "Successful", "Failure"}};
  platform::DateField from_date;  ///< date field 0
  platform::DateField to_date;    ///< date field 1
  platform::TextField txtTD;      ///< Troop/District: the first character is the troop
  platform::TextField txtBatch;
  platform::Command search{"Search"};  ///< command 2; 0 and 1 are the panel's
  platform::Command clear{"Clear"};    ///< command 3

  platform::Frame letter_action{"Letter Action"};
  platform::OptionGroup<7> OptLetter{{"View Letter", "Save (To Hard Drive)", "Return Mail", "Reprint (Local)",
                                      "Resubmit Letters", "Reprint (Batch)", "View Bookmark"}};
};

}  // namespace workspace
