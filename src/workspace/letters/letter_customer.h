#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/controls/control.h"
#include "platform/parties/services.h"
#include "platform/xml/xml.h"
#include "workspace/messaging/letter_data.h"

namespace workspace {

/// Whom a new letter is for. A letter about a form goes to the form's customer, whom only the server knows:
/// where the page shows another one, the user says which of the two is wrong. Decision [whose-form].
class LetterCustomer {
 public:
  /// All references outlive this: panel and form number field of the page that the letter is asked for on.
  LetterCustomer(const platform::Services& services, const std::string& message_title,
                 customers::CurrentCustomer& customer, customers::CustomerPanel& panel,
                 platform::Control& form_number)
      : services_(services),
        message_title_(message_title),
        customer_(customer),
        panel_(panel),
        form_number_(form_number) {}

  /// The letter's data have come. Where the page shows no customer, it shows the letter's from here on; where
  /// it shows another one, the user is asked with both names, and the page takes the letter's customer or
  /// stays as it is with the form number marked. Returns whether the letter may go on.
  ///
  /// Throws Failure kDamaged where a letter about a form names no customer while the page shows one.
  bool Settle(const LetterData& letter, const platform::XmlDocument& context);

 private:
  bool ShowMarks(const platform::XmlDocument& context);
  bool UserTakes(const LetterData& letter, const std::string& owner);
  void TellWhatIsLeft(const std::string& belongs);

  const platform::Services& services_;
  const std::string& message_title_;
  customers::CurrentCustomer& customer_;
  customers::CustomerPanel& panel_;
  platform::Control& form_number_;
};

}  // namespace workspace
