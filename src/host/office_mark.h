#pragma once

#include <optional>

#include "host/data_folder.h"

namespace host {

enum class OfficeKind {
  kDemo,  ///< invented customers, to try things on
  kOwn,   ///< an office's own data
};

/// What `init` leaves in a data folder (office.txt) to say what the folder is. It outlives everything else:
/// where the mark stands and the data are gone, a disk is missing, and nothing must be made in their place.
/// Decision [new-office].
struct OfficeMark {
  OfficeKind kind = OfficeKind::kOwn;
  bool is_whole = true;  ///< false while `init` has not come to its end for the first time
};

/// Nothing where there is no mark. One that cannot be read says that the folder is an office's. Throws
/// FileFailure where this program may not look for it.
std::optional<OfficeMark> ReadOfficeMark(const DataFolder& folder);

/// Replaces the mark. Throws FileFailure naming the file.
void LeaveOfficeMark(const DataFolder& folder, const OfficeMark& mark);

}  // namespace host
