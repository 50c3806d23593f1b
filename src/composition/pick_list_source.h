#pragma once

#include <string>
#include <string_view>

namespace composition {

/// The SELECT that fills a pick list of `code_type` for an office's `region` (blanks and case as it was set).
///
/// "LETTERS", "ONLINE", "BATCH" and "TEMPLATES", in any case, are lists of letters; anything else is the
/// identifier of a code table, of which the codes in force today are offered. Every list has CD_TBL_CD and
/// CD_TBL_DES, is sorted by the latter and starts with a blank row; letter lists other than "TEMPLATES" have
/// LTR_IND as well, code lists every column of their table.
std::string PickListStatement(std::string_view code_type, std::string_view region);

}  // namespace composition
