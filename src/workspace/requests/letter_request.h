#pragma once

#include <functional>
#include <string>
#include <vector>

#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "workspace/fields/field_check.h"
#include "workspace/fields/form_type_filter.h"
#include "workspace/fields/search_fields.h"
#include "workspace/fields/validation.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// The form types a letter type needs a document of, as a text of one-character codes; "" where it needs
/// none.
std::string RequiredFormTypes(platform::Utilities& utilities, const std::string& letter_type);

/// Splits the form text into form number and check digit. A text without "-" and digit leaves the digit. A
/// failure is reported.
void GetFormAndCheckDigit(const platform::Services& services, LetterRequestFields& fields);

/// The request for one letter: what its letter type needs, whether it may be sent, and how it is cleared.
class LetterRequest {
 public:
  /// What the request works with and on; all of it outlives the request.
  struct Uses {
    const platform::Services& services;
    const std::string& message_title;
    LetterRequestFields& fields;  ///< of the correspondence page
    SearchFields& search;         ///< of the tracking page
    customers::CurrentCustomer& customer;
    Pages& pages;
    FieldCheck& field_check;
    FormTypeFilter& form_types;
  };
  explicit LetterRequest(Uses uses) : uses_(uses) {}

  /// A letter type was chosen on the page: its form types are offered. Nothing happens without one.
  void LetterTypeChanged(PageIndex page);

  /// "Create Letter": takes the page into the request and, where it is valid, splits the form number and runs
  /// `start`.
  void CreateLetter(const std::function<void()>& start);
  /// Collects what is wrong, marks the fields and shows one message box. `ok` tells whether it may be sent.
  void ValidateLetter(const std::string& action, bool& ok);
  /// Empties the correspondence or the tracking page, its request and its list of letters.
  void ClearField(PageIndex page);

 private:
  std::vector<ValidationRule> Rules();
  void TakeRequest();
  void ClearLists(LetterPage& page);
  void ClearCorrespondence();
  void ClearTracking();

  const Uses uses_;
};

}  // namespace workspace
