#pragma once

#include <cstddef>

#include "platform/parties/services.h"
#include "workspace/letters/letter_names.h"
#include "workspace/messaging/page_index.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// Dresses the listed letters for display: descriptions for codes, officer names, derived columns.
class RowFormat {
 public:
  /// All references outlive this. With diagnostics (the setting DontPrint) a letter's number stands beside
  /// its batch number.
  RowFormat(const platform::Services& services, bool with_diagnostics, workspace::LetterNames& names,
            workspace::Pages& pages)
      : services_(services), with_diagnostics_(with_diagnostics), names_(names), pages_(pages) {}

  /// The grid loads the row: fills its display columns, step by step. A step that fails is reported and the
  /// next one goes on. Nothing happens for a grid without rows.
  void sdgGrid_RowLoaded(workspace::PageIndex grid, std::size_t row);

  /// The letter has another batch action or print status: describes these two again.
  void DressAgain(workspace::PageIndex grid, std::size_t row);

 private:
  template <typename Steps>
  void Dress(workspace::PageIndex grid, std::size_t row, const Steps& steps);

  const platform::Services& services_;
  const bool with_diagnostics_;
  workspace::LetterNames& names_;
  workspace::Pages& pages_;
};

}  // namespace tracking
