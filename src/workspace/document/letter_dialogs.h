#pragma once

#include <string>

#include "composition/kept_entries.h"
#include "platform/parties/services.h"
#include "workspace/letters/letter_forms.h"

namespace workspace {

/// Shows the dialogs that a letter needs on its way as modal forms of the host.
class LetterDialogs : public LetterForms {
 public:
  /// The references outlive this.
  LetterDialogs(const platform::Services& services, const std::string& message_title)
      : services_(services), message_title_(message_title) {}

  void ShowLetterInformation(const LetterInformation& letter) override;
  EnteredLetter EnterBookmarks(const LetterData& letter) override;

 private:
  /// What tells one letter from another for the person who completes it.
  struct Key {
    std::string letter_type, customer_id, form_type, form_number;
    bool operator==(const Key&) const = default;
  };

  const platform::Services& services_;
  const std::string& message_title_;

  // Of the letter that was completed last. They end with the program.
  Key kept_for_;
  composition::KeptEntries kept_;
};

}  // namespace workspace
