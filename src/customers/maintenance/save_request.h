#pragma once

#include <memory>
#include <string>

#include "customers/maintenance/address_changes.h"
#include "customers/maintenance/snapshot.h"
#include "platform/record_set.h"

namespace customers {

/// Which values of a customer a save has changed, of those that can be emptied.
struct ChangeFlags {
  bool MiddleNameChanged = false;
  bool SuffixNameChanged = false;
  bool PhoneChanged = false;
  bool AccountNumberChanged = false;
  bool ResAddr2Changed = false;
  bool MailAddr2Changed = false;
  bool ContactNameChanged = false;
};

/// What a save is made from.
struct SaveRequest {
  CustomerControls& controls;
  AddressChanges& changes;
  const Snapshot& opening;
  const Snapshot& current;
  const std::string& mode;    ///< "ADD" or "UPD"
  const std::string& CustID;  ///< of the customer that is updated
};

/// The record "Customer" with its one row, as the server takes it. Columns that are not sent are null. Sets
/// the flags of what differs from the opening values, and has the addresses note what is sent to be
/// verified.
std::shared_ptr<platform::RecordSet> BuildRecordset(const SaveRequest& request, ChangeFlags& flags);

}  // namespace customers
