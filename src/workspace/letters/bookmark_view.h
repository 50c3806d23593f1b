#pragma once

#include <cstddef>
#include <string>

#include "platform/controls/grid.h"
#include "platform/parties/services.h"
#include "workspace/letters/letter_forms.h"
#include "workspace/messaging/letter_data.h"
#include "workspace/messaging/letter_source.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// Shows the fields of a letter that was produced already, and how it was printed.
class BookmarkView {
 public:
  struct Uses {
    const platform::Services& services;
    const bool with_diagnostics;        ///< the setting DontPrint
    const platform::Grid& letters;      ///< of the tracking page
    const LetterSource* batch_browser;  ///< null where there is none
    LetterForms& forms;
  };
  /// What it uses outlives it.
  explicit BookmarkView(Uses uses) : uses_(uses) {}

  /// Takes the reply that brings the letter's context. How it was printed stands in the current row of the
  /// batch letter browser while that is open, else in the letter's row on the tracking page, though another
  /// row may have become the current one since.
  void ViewBookMark(const Reply& reply);

 private:
  std::string ContextOf(const Reply& reply) const;
  void AddRow(const Reply& reply, LetterInformation& letter) const;
  /// Where the letter stands on the tracking page. Throws Failure kNotFound where it does not any more.
  std::size_t RowOf(const LetterData& letter) const;
  bool IsBatchBrowserOpen() const;

  const Uses uses_;
};

}  // namespace workspace
