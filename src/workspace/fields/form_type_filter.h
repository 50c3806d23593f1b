#pragma once

#include <string>

#include "platform/parties/services.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// Restricts a page's form type list to what the chosen letter type needs.
class FormTypeFilter {
 public:
  /// The references outlive this. `request` is the correspondence page's.
  FormTypeFilter(const platform::Services& services, const std::string& message_title,
                 const LetterRequestFields& request, Pages& pages)
      : services_(services), message_title_(message_title), request_(request), pages_(pages) {}

  /// `types` holds a character for each form type; without any the page takes no document. Where a letter for
  /// a customer is then being asked for without one, the user is told.
  void FilterFormType(const std::string& types, PageIndex page);

 private:
  void TakeNoDocument(LetterPage& page);
  bool LacksCustomer();

  const platform::Services& services_;
  const std::string& message_title_;
  const LetterRequestFields& request_;
  Pages& pages_;
};

}  // namespace workspace
