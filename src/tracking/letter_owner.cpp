#include "tracking/letter_owner.h"

#include <set>
#include <string>

#include "platform/text.h"

namespace tracking {

namespace {

constexpr std::size_t kMostNamed = 5;

struct OtherOwners {
  std::size_t letters = 0;
  std::set<std::string> customers = {};
};

OtherOwners OwnersBesides(const std::string& shown, const platform::Grid& letters) {
  OtherOwners others;
  for (const auto row : letters.selected_rows()) {
    const std::string owner(platform::Trim(letters.rows()->Text(row, "CUST_ID")));
    if (owner.empty() || owner == shown) continue;
    ++others.letters;
    others.customers.insert(owner);
  }
  return others;
}

std::string Named(const std::set<std::string>& customers) {
  std::string names;
  std::size_t named = 0;
  for (const auto& customer : customers) {
    if (named++ == kMostNamed) return names + " and others";
    names += (names.empty() ? "" : ", ") + customer;
  }
  return names;
}

}  // namespace

bool AreLettersMeant(const platform::Services& services, const std::string& message_title,
                     const customers::CustomerPanel& shown, const platform::Grid& letters) {
  using platform::MessageAnswer;
  const std::string shown_id(platform::Trim(shown.customer_id.caption()));
  if (shown_id.empty() || !letters.rows() || !letters.rows()->HasColumn("CUST_ID")) return true;
  const auto others = OwnersBesides(shown_id, letters);
  if (others.letters == 0) return true;

  const auto selected = letters.selected_rows().size();
  const std::string line_break(platform::kLineBreak);
  const auto subject = selected == 1 ? std::string("This letter is for customer ")
                                     : std::to_string(others.letters) + " of these " +
                                           std::to_string(selected) + " letters are for customer ";
  const auto name = platform::ReplaceAll(shown.name.caption(), "&&", "&");
  const auto text = subject + Named(others.customers) + "." + line_break + "The page shows " + shown_id +
                    (name.empty() ? "" : " " + name) + "." + line_break + line_break +
                    "Do you want to go on?";
  return services.host.ShowMessage({text, platform::MessageIcon::kQuestion, message_title,
                                    platform::MessageButtons::kYesNo, MessageAnswer::kNo}) ==
         MessageAnswer::kYes;
}

}  // namespace tracking
