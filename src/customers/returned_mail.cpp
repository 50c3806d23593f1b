#include "customers/returned_mail.h"

namespace customers {

std::string ReturnedMailText(const platform::ReturnedMail& returned) {
  if (!returned.Any()) return "";
  const auto* addresses = returned.mailing && returned.residential ? "both addresses"
                          : returned.mailing                       ? "the mailing address"
                                                                   : "the residential address";
  return std::string("Mail came back from ") + addresses + ".";
}

}  // namespace customers
