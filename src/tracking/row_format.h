#pragma once

#include <cstddef>

#include "platform/parties/services.h"
#include "workspace/letters/letter_names.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/workspace_state.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// Dresses the listed letters for display: descriptions for codes, officer names, derived columns.
class RowFormat {
 public:
  /// All references outlive this.
  RowFormat(const platform::Services& services, const workspace::WorkspaceState& state,
            workspace::LetterNames& names, workspace::Pages& pages)
      : services_(services), state_(state), names_(names), pages_(pages) {}

  /// The grid loads the row: fills its display columns, step by step. A step that fails is reported and the
  /// next one goes on. Nothing happens for a grid without rows.
  void sdgGrid_RowLoaded(workspace::PageIndex grid, std::size_t row);

 private:
  const platform::Services& services_;
  const workspace::WorkspaceState& state_;
  workspace::LetterNames& names_;
  workspace::Pages& pages_;
};

}  // namespace tracking
