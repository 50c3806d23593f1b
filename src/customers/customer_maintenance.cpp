#include "customers/customer_maintenance.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "customers/customer_edit.h"
#include "platform/text.h"

namespace customers {

namespace {

constexpr std::size_t kAccountDigits = 13;
constexpr const char* kWhichKind =
    "Is the new customer a business?\r\n\r\nYes adds a business, No adds an individual.";

bool IsTypedDigit(char character) {
  return character >= '0' && character <= '9';
}

struct TypedSeeds {
  std::string name;
  std::string account;
};

TypedSeeds SeedsOf(std::string_view typed) {
  std::string digits;
  std::ranges::copy_if(typed, std::back_inserter(digits), IsTypedDigit);
  if (digits.empty()) return {std::string(platform::Trim(typed)), ""};
  const bool is_account = digits.size() == kAccountDigits && std::ranges::all_of(typed, [](char character) {
                            return IsTypedDigit(character) || character == '-';
                          });
  return {"", is_account ? digits : ""};
}

/// One maintenance at a time, and who is told of its save.
class Opener {
 public:
  Opener(const platform::Services& services, const std::string& message_title)
      : services_(services), message_title_(message_title) {}

  void Edit(const std::string& customer_id, CustomerMaintenance::Saved saved) {
    if (Begin(std::move(saved))) edit_->Edit(customer_id);
  }
  void Add(const std::string& typed, CustomerMaintenance::Saved saved) {
    Forget();  // it would open over the question
    const auto answer =
        services_.host.ShowMessage({kWhichKind, platform::MessageIcon::kQuestion, message_title_,
                                    platform::MessageButtons::kYesNoCancel, platform::MessageAnswer::kYes});
    if (answer == platform::MessageAnswer::kCancel || !Begin(std::move(saved))) return;
    if (answer == platform::MessageAnswer::kYes)
      edit_->AddBusiness(BusinessSeeds(typed));
    else
      edit_->AddIndividual(IndividualSeeds(typed));
  }
  void Forget() {
    if (edit_) edit_->Forget();
  }

 private:
  // Made anew each time: the title is known when the workspace is shown.
  bool Begin(CustomerMaintenance::Saved saved) {
    Forget();
    if (edit_ && edit_->IsUnderWay()) return false;
    edit_ = std::make_unique<CustomerEdit>(services_, message_title_);
    told_ = edit_->Saved.Connect(std::move(saved));
    return true;
  }

  const platform::Services& services_;
  const std::string& message_title_;
  std::unique_ptr<CustomerEdit> edit_;
  platform::Connection told_;
};

}  // namespace

CustomerMaintenance MaintenanceOver(const platform::Services& services, const std::string& message_title) {
  auto opener = std::make_shared<Opener>(services, message_title);
  return {[opener](const std::string& id, CustomerMaintenance::Saved saved) {
            opener->Edit(id, std::move(saved));
          },
          [opener](const std::string& typed, CustomerMaintenance::Saved saved) {
            opener->Add(typed, std::move(saved));
          },
          [opener] { opener->Forget(); }};
}

std::vector<std::string> BusinessSeeds(std::string_view typed) {
  const auto [name, account] = SeedsOf(typed);
  return {name, account, ""};
}

std::vector<std::string> IndividualSeeds(std::string_view typed) {
  const auto [name, account] = SeedsOf(typed);
  const auto blank = std::min(name.find(' '), name.size());
  return {name.substr(0, blank), std::string(platform::Trim(name.substr(blank))), account, ""};
}

}  // namespace customers
