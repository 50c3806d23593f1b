#pragma once

#include <string>

#include "platform/parties/services.h"
#include "workspace/fields/field_check.h"
#include "workspace/fields/search_fields.h"
#include "workspace/fields/validation.h"
#include "workspace/pages/tracking_page.h"

namespace workspace {

/// Whether the letter history may be searched by what the page's criteria hold.
class SearchCheck {
 public:
  /// The references outlive this.
  SearchCheck(const platform::Services& services, const std::string& message_title,
              const SearchFields& search, TrackingPage& page, FieldCheck& field_check)
      : services_(services),
        message_title_(message_title),
        search_(search),
        page_(page),
        field_check_(field_check) {}

  /// Collects what is wrong, marks the fields and shows one message box. `ok` tells whether the search may be
  /// sent; where the check itself fails, it may not. (The name is given so.)
  void ValidateSeach(bool& ok);

 private:
  std::vector<ValidationRule> Rules();

  const platform::Services& services_;
  const std::string& message_title_;
  const SearchFields& search_;
  TrackingPage& page_;
  FieldCheck& field_check_;
};

}  // namespace workspace
