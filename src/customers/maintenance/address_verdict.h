#pragma once

#include <cstddef>
#include <string>

#include "customers/maintenance/address_changes.h"
#include "customers/maintenance/customer_controls.h"
#include "platform/record_set.h"

namespace customers {

/// Shows what the verification says of the addresses that were entered: the suggestions beside them, and in
/// words what did not pass.
class AddressVerdict {
 public:
  /// `row` of `rows`: a customer as the server answered, whose FINALIST_IND is above 0. All of it outlives
  /// this.
  AddressVerdict(CustomerControls& controls, const AddressChanges& changes, const platform::RecordSet& rows,
                 std::size_t row)
      : controls_(controls), changes_(changes), rows_(rows), row_(row) {}

  /// Fills the suggestions and opens the frames in which one can be accepted. Returns the lines that tell the
  /// user, parted by line breaks; "" for a verdict nobody knows, which fills nothing.
  std::string Show();

 private:
  std::string Text(const AddressSide& side, const char* column) const;
  void FillSuggestion(const AddressSide& side, const AddressSide& other, bool& no_suggestion);
  void CopyEntered(const AddressSide& side);
  void EnableFrames(long verdict);

  CustomerControls& controls_;
  const AddressChanges& changes_;
  const platform::RecordSet& rows_;
  const std::size_t row_;
  bool no_mailing_suggestion_ = false;
  bool no_resident_suggestion_ = false;
};

}  // namespace customers
