#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/services.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// Decides after every change of a field which of a page's commands can be used.
class FieldCheck {
 public:
  /// The references outlive this.
  FieldCheck(const platform::Services& services, Pages& pages) : services_(services), pages_(pages) {}

  /// Marks the fields that are wrong and enables "Create Letter", or the page's "Search", when none is.
  void CheckEdit(PageIndex page);
  /// Enables "Create Letter" as CheckEdit does and leaves all marks: for a reply, which gives the command
  /// back only where the page has what a letter needs.
  void EnableCreateLetter();
  /// What keeps the page's command disabled at this moment, a line for each broken rule, with the reason
  /// where the rule knows more; "" where nothing does. Marks nothing.
  std::string WhyDisabled(PageIndex page);
  /// What the last check of that page found wrong, in the order of its rules.
  const std::vector<std::string>& messages(PageIndex page) { return messages_[page]; }

  /// Gives the page's checked fields, the dates and options of its search included, their normal look.
  void DefaultFieldColor(PageIndex page);
  /// Gives the tracking page's two dates their normal look.
  void ClearEdit();
  /// Letters of the nightly batch may be created on line from now on, too. The list of letter types may have
  /// no LTR_IND then.
  void TakeEveryLetter() { takes_every_letter_ = true; }

 private:
  struct Rule {
    bool broken;
    std::string_view message;
    platform::Control* marked = nullptr;
    std::string reason = {};  ///< more than the message says
  };
  std::vector<Rule> Rules(PageIndex page);
  std::vector<Rule> CorrespondenceRules();
  std::vector<Rule> TrackingRules();
  std::vector<Rule> BatchRules();
  std::vector<platform::Control*> CheckedFields(PageIndex page);
  bool NothingToSearchFor();
  platform::Utilities::FormNumberVerdict JudgeFormNumber(LetterPage& page);
  bool Apply(PageIndex page, const std::vector<Rule>& rules);

  const platform::Services& services_;
  Pages& pages_;
  std::map<PageIndex, std::vector<std::string>> messages_;
  bool takes_every_letter_ = false;
};

}  // namespace workspace
