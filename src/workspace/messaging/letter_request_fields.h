#pragma once

#include <string>

namespace workspace {

/// What a letter, or a search for letters, is asked for with. Every text is empty when absent.
struct LetterRequestFields {
  std::string customer_id = {};
  std::string form_text = {};    ///< as typed: a form number, possibly with a check digit after a dash
  std::string form_type = {};    ///< trimmed
  std::string form_number = {};  ///< without check digit
  std::string check_digit = {};
  std::string messages = {};  ///< what the last validation found, a line each

  // A search only.
  std::string from_date = {};  ///< "yyyy-mm-dd"
  std::string to_date = {};
  std::string troop = {};
  std::string district = {};
  std::string batch_number = {};
};

}  // namespace workspace
