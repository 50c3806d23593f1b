#pragma once

#include <optional>
#include <string>

#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The letter with what it has none of itself taken from the common template, as a package; nothing where
/// there is nothing to take.
///
/// - Header parts, where no section of the letter has a header, and footer parts likewise; with what they
///   refer to. A first page of its own comes with them only where the letter has neither.
/// - Page size and margins of the common template's last section, for sections that do not say theirs; where
///   its headers or footers were taken, the margins and distances that belong to them for all sections (left
///   and right for upright pages).
/// - Styles whose identifier the letter does not define, without their numbering; all styles where the letter
///   has no style part.
///
/// Throws Failure kDamaged where a part of either cannot be read. Decision [letterhead-margins].
std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common);

}  // namespace wordprocessor
