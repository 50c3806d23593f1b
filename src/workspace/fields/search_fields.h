#pragma once

#include <string>

#include "workspace/messaging/letter_request_fields.h"

namespace workspace {

/// What letters are searched by on the tracking page, beside what its lists and options say. Every text is
/// empty when absent.
struct SearchFields {
  LetterRequestFields letter = {};
  std::string from_date = {};  ///< "yyyy-mm-dd"
  std::string to_date = {};
  std::string troop = {};
  std::string district = {};
  std::string batch_number = {};
};

}  // namespace workspace
