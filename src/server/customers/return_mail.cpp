#include "server/customers/return_mail.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "server/customers/customer_changes.h"
#include "server/customers/new_customer.h"
#include "server/history/letter_rules.h"

namespace server {
namespace {

using platform::RecordSet;
using platform::Value;

namespace item_outcome = platform::item_outcome;

constexpr std::string_view kReturnMark = "RTND_IND";
constexpr std::string_view kVerificationMark = "VRFY_CD";
constexpr std::string_view kMarked = "Y";
// Verified, and not asked for: letters go to both.
constexpr auto kUsable = std::to_array<std::string_view>({"V", "N"});

struct SentPlace {
  int type;  ///< ADDR_TYP_CD
  std::string_view prefix;
  std::string_view words;
};
constexpr auto kSentPlaces = std::to_array<SentPlace>(
    {{platform::letter_address::kMailing, kMailPrefix, "mailing address"},
     {platform::letter_address::kResidential, kResidentialPrefix, "resident address"}});

std::string SentColumn(const SentPlace& place, std::string_view name) {
  return std::string(place.prefix).append(name);
}

/// The day on which the address became another place than the one that a letter of that time went to; ""
/// where it is that place still, or again.
std::string MovedSince(Exchange& exchange, const std::string& customer, const SentPlace& place,
                       const Value& time, const CustomerValues& now) {
  const auto changes = exchange.database.Select(
      R"(SELECT COL_NM, OLD_TXT, UPDT_TS FROM customer_change
         WHERE CUST_ID = ? AND UPDT_TS > ? AND COL_NM IN (?, ?, ?, ?, ?) ORDER BY UPDT_NBR DESC)",
      {customer, time, SentColumn(place, "ADDR_1"), SentColumn(place, "ADDR_2"), SentColumn(place, "CITY"),
       SentColumn(place, "ST"), SentColumn(place, "ZIP_CD")});
  auto then = now;
  for (std::size_t row = 0; row < changes->RecordCount(); ++row)
    then[changes->Text(row, "COL_NM")] = changes->Text(row, "OLD_TXT");
  if (changes->IsEmpty() ||
      exchange.verifier.IsSamePlace(AddressOf(then, place.prefix), AddressOf(now, place.prefix)))
    return "";
  return changes->Text(0, "UPDT_TS").substr(0, std::string_view("yyyy-mm-dd").size());
}

struct ReturnOutcome {
  std::string_view what;
  std::string sentence;
};

class ReturnedLetter {
 public:
  ReturnedLetter(Exchange& exchange, std::int64_t number)
      : exchange_(exchange),
        number_(number),
        letter_(exchange.database.Select(
            R"(SELECT CUST_ID, ADDR_TYP_CD, PRNT_STTS_CD, LST_PRNT_TS,
                 COALESCE(LST_PRCS_TS, PRNT_TS, LST_PRNT_TS) AS MADE_TS
               FROM letter_history WHERE SEQ_NBR = ?)",
            {number})) {}

  ReturnOutcome Mark() {
    const auto refuse = [&](const std::string& because) {
      return ReturnOutcome{item_outcome::kRefused, Name() + because};
    };
    if (letter_->IsEmpty()) return refuse(" is not in the history any more. Search again.");
    const auto status = letter_->Text("PRNT_STTS_CD");
    if (letter_->Get("LST_PRNT_TS").IsNull() ||
        !LetterRules(exchange_.database).Allows(letter_action::kReturnMail, status))
      return refuse(" cannot have come back: its print status is \"" + status + "\".");
    const auto* place = Place();
    const auto customer = letter_->Text("CUST_ID");
    if (place == nullptr || customer.empty()) {
      return refuse(
          " does not say which address it went to. Tick the mark of returned mail in the customer's own "
          "dialog.");
    }
    const auto stored = FindCustomerValues(exchange_.database, customer);
    if (!stored) return refuse(" went to customer " + customer + ", who is not in the register any more.");
    const auto whose = std::string(place->words) + " of customer " + customer;
    // A print of today may be of a letter that was made, and addressed, a year ago.
    const auto changed = MovedSince(exchange_, customer, *place, letter_->Get("MADE_TS"), *stored);
    if (!changed.empty()) {
      return {item_outcome::kRefused, "The " + whose + " was changed on " + changed + ", after letter " +
                                          std::to_string(number_) + " was made. It was not marked."};
    }
    const bool was_marked = stored->at(SentColumn(*place, kReturnMark)) == kMarked;
    if (!was_marked) MarkAddress(customer, *place, *stored);
    const bool is_new = NoteLetter(customer, *place);
    if (!was_marked)
      return {item_outcome::kTaken, "The " + whose + " is marked now: mail comes back from it."};
    if (is_new)
      return {item_outcome::kTaken, "The " + whose + " was marked already; this letter is noted, too."};
    return {item_outcome::kAlready, "The " + whose + " was marked already, for this letter."};
  }

  Value Of(const char* column) const { return letter_->IsEmpty() ? Value() : letter_->Get(column); }

 private:
  std::string Name() const { return "Letter " + std::to_string(number_); }

  const SentPlace* Place() const {
    const auto found = std::ranges::find_if(kSentPlaces, [&](const SentPlace& place) {
      return letter_->Text("ADDR_TYP_CD") == std::to_string(place.type);
    });
    return found == kSentPlaces.end() ? nullptr : found;
  }

  void MarkAddress(const std::string& customer, const SentPlace& place, const CustomerValues& before) {
    auto after = before;
    after[SentColumn(place, kReturnMark)] = kMarked;
    const auto number = NextChange(exchange_.database, customer);
    StoreCustomerChanges(exchange_, customer, number, before, after);
    UpdateStoredCustomer(exchange_.database, customer, number, before, after);
  }

  /// Returns whether the letter was not noted yet.
  bool NoteLetter(const std::string& customer, const SentPlace& place) {
    return exchange_.database.Change(
               R"(INSERT INTO returned_mail (SEQ_NBR, CUST_ID, ADDR_TYP_CD, RTND_DT, UPDT_USER_ID)
                  VALUES (?, ?, ?, ?, ?)
                  ON CONFLICT (SEQ_NBR) DO UPDATE SET CUST_ID = excluded.CUST_ID, CLRD_TS = NULL,
                    ADDR_TYP_CD = excluded.ADDR_TYP_CD, RTND_DT = excluded.RTND_DT,
                    UPDT_USER_ID = excluded.UPDT_USER_ID
                  WHERE returned_mail.CLRD_TS IS NOT NULL)",
               {number_, customer, place.type, platform::DateText(exchange_.Today()),
                exchange_.request.user_id}) > 0;
  }

  Exchange& exchange_;
  const std::int64_t number_;
  const std::shared_ptr<RecordSet> letter_;
};

}  // namespace

void AnswerReturnMail(Exchange& exchange) {
  const auto number = *exchange.keys.Number(platform::request_key::kReturnMail);
  ReturnedLetter letter(exchange, number);
  const auto outcome = letter.Mark();
  exchange.reply
      .AddRecord(platform::record_name::kReturnMailOutcome,
                 {platform::kReturnMailColumns.begin(), platform::kReturnMailColumns.end()})
      .Append({number, letter.Of("CUST_ID"), letter.Of("ADDR_TYP_CD"), std::string(outcome.what),
               outcome.sentence});
}

void ClearReturnedMail(Exchange& exchange, const std::string& customer, const CustomerValues& after) {
  const auto value = [&](const SentPlace& place, std::string_view name) {
    const auto found = after.find(SentColumn(place, name));
    return found == after.end() ? std::string_view() : found->second;
  };
  for (const auto& place : kSentPlaces) {
    if (value(place, kReturnMark) == kMarked ||
        std::ranges::find(kUsable, value(place, kVerificationMark)) == kUsable.end())
      continue;
    exchange.database.Change(
        "UPDATE returned_mail SET CLRD_TS = ? WHERE CUST_ID = ? AND ADDR_TYP_CD = ? AND CLRD_TS IS NULL",
        {exchange.now, customer, place.type});
  }
}

}  // namespace server
