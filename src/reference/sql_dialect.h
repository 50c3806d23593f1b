#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"

namespace reference {

/// `statement`, written in the dialect of the given queries, as SQLite runs it.
///
/// Outside quoted texts and names, a date between "#" signs (#2024-07-31#) becomes the text '2024-07-31', as
/// the tables hold their dates, and date() becomes `today`. Everything else is passed on unchanged.
/// Throws Failure kRefused, naming what is wrong, for a statement that is no SELECT, for a date that is none
/// and for a date, text or name that is not closed. Decision [local-day].
std::string TranslateStatement(std::string_view statement, platform::Date today);

/// `text` as a quoted text of a statement, single quotes in it doubled.
std::string SqlQuoted(std::string_view text);

}  // namespace reference
