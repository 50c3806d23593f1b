#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "customers/customer_panel.h"
#include "platform/key_item.h"
#include "platform/parties/services.h"
#include "workspace/fields/search_check.h"
#include "workspace/fields/search_fields.h"
#include "workspace/fields/troop_district_field.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// The search for letters that were produced: from the tracking page's criteria to the listed letters. A
/// failure in one of its members is reported.
class HistorySearch {
 public:
  /// What it works with and on; all of it outlives the search.
  struct Uses {
    const platform::Services& services;
    const LetterRequestFields& request;  ///< of the correspondence page
    SearchFields& search;                ///< of the tracking page
    Pages& pages;
    RequestEnvelope& envelope;
    TroopDistrictField& troop_district;
    SearchCheck& check;
    const customers::CurrentCustomer& customer;
  };
  explicit HistorySearch(Uses uses) : uses_(uses) {}

  /// "Search" of the tracking page: takes the criteria into the request and, where they pass the check, sends
  /// it. The customer can be chosen again once the page has been cleared.
  void mCmdTracking_Click();
  /// Asks for the letters of the page's criteria; its grid is disabled until the reply has been handled.
  /// Returns whether the request is under way.
  bool SendLetterInq(PageIndex page);
  /// Lists the letters of these numbers on the tracking page, whatever its criteria are; those that are not
  /// there are left out. At most request_key::kMostLettersNamed. Returns whether the request is under way.
  bool ListLetters(const std::vector<std::int64_t>& numbers);
  /// The letters have come: lists them on the page. On the batch page, which lists none, they go to the
  /// tracking page.
  void FillHistory(const Reply& reply, PageIndex page);

 private:
  void TakeCriteria();
  bool Send(PageIndex page, const std::function<std::vector<platform::KeyItem>()>& keys);
  std::vector<platform::KeyItem> Keys(PageIndex page);
  void AddTrackingKeys(std::vector<platform::KeyItem>& keys) const;
  void AddDates(std::vector<platform::KeyItem>& keys) const;
  const char* LetterStatus() const;
  /// Whom a search of letters is narrowed to though the user has picked nobody; "" for nobody.
  std::string CustomerOfAListedLetter() const;
  void ListReply(const Reply& reply, LetterPage& page);
  void WithdrawLetterActions();
  void WithdrawOnlineActions();

  const Uses uses_;
  std::string narrowed_to_;  // the last search of the tracking page
};

}  // namespace workspace
