#pragma once

#include <cstdint>
#include <string>

namespace workspace {

/// One letter: what it was asked with, its data, and what its history row says of it. It travels with the
/// request that it is about and comes back with the reply, because page and list may be used for the next one
/// meanwhile; also while this one stands in a preview, whose print is recorded from here.
struct LetterData {
  std::string letter_type = {};
  std::string letter_name = {};  ///< in words; "" where it is not known
  std::string template_name = {};
  std::string template_path = {};  ///< where the template is on this machine
  bool is_trial = false;           ///< made to look at its template: never recorded
  std::string form_type = {};
  std::string form_number = {};
  std::string check_digit = {};
  // Of the customer that the page showed when the letter was asked for.
  std::string page_customer_id = {};
  std::string page_customer_name = {};

  std::string context = {};  ///< the data context as XML; after bookmark entry as the user completed it
  std::string customer_id = {};
  std::string print_status = {};  ///< "V": the address did not pass verification
  std::string county_number = {};
  std::string process_time = {};
  std::int16_t address_type = 0;
  bool printed_from_entry_form = false;

  // Of a stored letter, as the list had it when the letter was asked for.
  std::int32_t sequence_number = 0;
  std::string first_printed = {};
  std::string last_printed = {};
  std::string print_error = {};
  bool from_batch_browser = false;
};

}  // namespace workspace
