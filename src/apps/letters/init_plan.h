#pragma once

#include <optional>

#include "host/office_mark.h"

namespace apps {

/// What `init` may do with a data folder.
struct InitPlan {
  host::OfficeKind kind = host::OfficeKind::kOwn;
  bool is_new = false;  ///< the office is made; otherwise it is only brought up to date
};

/// Looks at the folder and changes nothing. `asked` is the kind that the user named; a new folder needs one.
///
/// Throws Failure kRefused, so that invented data never stand in for real ones: where the folder held an
/// office and its database or settings are missing, where it is of the other kind, or full of something else.
InitPlan PlanInit(const host::DataFolder& folder, std::optional<host::OfficeKind> asked);

}  // namespace apps
