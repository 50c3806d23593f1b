#pragma once

#include <string>

#include "platform/value.h"
#include "workspace/messaging/letter_data.h"

namespace workspace {

/// The name, without an ending, under which a save proposes to keep the letter: letter, customer and day. The
/// day is that of a stored letter's first print, else `today`. What no file name takes has become a dash;
/// what is not known is left out, and without the letter's name there is no proposal ("").
std::string ProposedFileName(const LetterData& letter, platform::Date today);

}  // namespace workspace
