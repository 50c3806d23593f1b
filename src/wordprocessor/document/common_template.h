#pragma once

#include <optional>
#include <string>

#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The letter with what it has none of itself taken from the common template, as a package; nothing where
/// there is nothing to take.
///
/// - Header parts, where no section of the letter has a header, and footer parts likewise; with what they
///   refer to. A first page of its own comes with them only where the letter has neither; first and even
///   pages that only the letter sets apart show what all pages show. They look as they do in the common
///   template: where the letter calls other styles, lists or defaults by the same names, under names of
///   their own.
/// - Page size and margins of the common template's last section, for sections that do not say theirs. Where
///   its headers were taken, its page size for all sections; where headers or footers were, the margins and
///   distances that belong to them. Pages that lie the other way keep their size, left and right.
/// - Styles whose identifier the letter does not define, without their numbering; all styles where the letter
///   has no style part.
///
/// Throws Failure kDamaged where a part of either cannot be read. Decisions [letterhead-margins] and
/// [letterhead-styles].
std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common);

}  // namespace wordprocessor
