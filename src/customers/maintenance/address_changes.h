#pragma once

#include "customers/maintenance/customer_controls.h"
#include "customers/maintenance/snapshot.h"

namespace customers {

/// Whether an address has to be verified before it is stored: one that was changed since it last was, or
/// since the dialog was shown.
class AddressChanges {
 public:
  /// Both outlive this. An empty snapshot means that none was taken yet.
  AddressChanges(CustomerControls& controls, const Snapshot& opening)
      : controls_(controls), opening_(opening) {}

  /// Whether an address has changed since it was last sent to be verified, or, where none has come back,
  /// since the dialog was shown.
  bool AddressChanged() const;
  /// Whether both suggestions are accepted, and a mailing address was suggested.
  bool AcceptAllFinalist() const;
  /// Which addresses differ from those the dialog was shown with; neither where it was not shown yet.
  void CheckChangedAddress(bool& mailing_changed, bool& resident_changed) const;
  /// Every address field and state list keeps its value as the one that is sent now.
  void RememberSent();

 private:
  CustomerControls& controls_;
  const Snapshot& opening_;
};

}  // namespace customers
