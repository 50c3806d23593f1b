#pragma once

#include <string>
#include <vector>

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
  /// The addresses are sent to be verified as they stand now.
  void NoteSent();
  /// What was sent last is verified: every address field and state list keeps in its tag what it was then.
  /// Nothing where nothing was sent. Decision [verdict-remembered].
  void RememberVerified();

 private:
  CustomerControls& controls_;
  const Snapshot& opening_;
  std::vector<std::string> sent_;
};

}  // namespace customers
