#pragma once

#include <cstdint>
#include <string>

namespace workspace {

/// The letter at hand: its data, and what its history row says of it.
struct LetterData {
  std::string context;  ///< the data context as XML; after bookmark entry as the user completed it
  std::string customer_id;
  std::string print_status;  ///< "V": the address did not pass verification
  std::string county_number;
  std::string process_time;
  std::int16_t address_type = 0;
  std::int32_t sequence_number = 0;  ///< of the stored letter being reprinted
  bool printed_from_entry_form = false;
};

}  // namespace workspace
