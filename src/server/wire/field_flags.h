#pragma once

#include <string>

#include "platform/agreed/field_flags.h"

/// The flag words of a data context's elements under the names this room's sources use, and what they mean in
/// words.
namespace server {

using platform::FlagWord;
namespace state = platform::field_state;
namespace error = platform::field_error;
namespace address = platform::field_address;

/// What the word says, as a list for a person ("Table row, empty in the data"); "" where it says nothing.
std::string ExplainType(FlagWord state);
std::string ExplainAttributes(FlagWord state);
std::string ExplainState(FlagWord state);
std::string ExplainErrors(FlagWord state, FlagWord error);
std::string ExplainAddress(FlagWord address);

}  // namespace server
