#pragma once

#include <string>

namespace workspace {

/// Whom a letter is for, or which form it is about. Each page has its own. Every text is empty when absent.
struct LetterRequestFields {
  std::string customer_id = {};
  std::string form_text = {};    ///< as typed: a form number, possibly with a check digit after a dash
  std::string form_type = {};    ///< trimmed
  std::string form_number = {};  ///< without check digit
  std::string check_digit = {};
};

}  // namespace workspace
