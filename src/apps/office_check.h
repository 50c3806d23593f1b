#pragma once

#include <string>
#include <vector>

#include "host/data_folder.h"
#include "host/settings_file.h"
#include "platform/parties/reference_database.h"

namespace apps {

/// When an office is looked at. At a start no template is opened but the common one; `init`, which takes
/// templates in, looks at the typefaces and errors of each, and at the product's own.
enum class Occasion { kStart, kInit };

/// What is wrong with an office although its programs run: sentences that name file, line and value, for
/// whoever keeps it. Settings first, then the region, lines of the template catalogue whose document the
/// server has not, versions in force that no start fetches, errors of templates in force, templates that were
/// corrected under their old names, and typefaces that this machine lays out at other widths. None of them
/// stops a letter that does not need what is wrong.
///
/// A reference database that cannot be read is left to whoever needs it. Decision [office-check].
std::vector<std::string> CheckOffice(const host::DataFolder& folder, const host::SettingsFile& settings,
                                     platform::ReferenceDatabase& reference, Occasion occasion);

}  // namespace apps
