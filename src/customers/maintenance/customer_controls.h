#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "composition/letter_combo.h"
#include "platform/controls/check_box.h"
#include "platform/controls/command.h"
#include "platform/controls/label.h"
#include "platform/controls/number_field.h"
#include "platform/controls/option_button.h"
#include "platform/controls/text_field.h"
#include "platform/parties/services.h"

namespace customers {

/// Numbers of the text fields in `mTxtCust`. An address's lines, city and zip follow one another; so do a
/// suggested address's lines, city, state and zip.
namespace text_number {
inline constexpr std::size_t kFirstName = 0;
inline constexpr std::size_t kMiddleName = 1;
inline constexpr std::size_t kLastName = 2;
inline constexpr std::size_t kSuffix = 3;
inline constexpr std::size_t kBusinessName = 4;
inline constexpr std::size_t kContactName = 5;
inline constexpr std::size_t kMailing = 6;
inline constexpr std::size_t kResident = 10;
inline constexpr std::size_t kSuggestedMailing = 14;
inline constexpr std::size_t kSuggestedResident = 19;
inline constexpr std::size_t kCount = 24;
}  // namespace text_number

/// A customer's two addresses, and where each has its controls.
struct AddressSide {
  std::string_view prefix;      ///< of its columns
  std::size_t number;           ///< of its state list, its boxes and its county
  std::size_t first_entered;    ///< number of its first text field
  std::size_t first_suggested;  ///< the same for the suggested address

  constexpr std::size_t Line1() const { return first_entered; }
  constexpr std::size_t Line2() const { return first_entered + 1; }
  constexpr std::size_t City() const { return first_entered + 2; }
  constexpr std::size_t Zip() const { return first_entered + 3; }
  constexpr std::size_t SuggestedLine1() const { return first_suggested; }
  constexpr std::size_t SuggestedLine2() const { return first_suggested + 1; }
  constexpr std::size_t SuggestedCity() const { return first_suggested + 2; }
  constexpr std::size_t SuggestedState() const { return first_suggested + 3; }
  constexpr std::size_t SuggestedZip() const { return first_suggested + 4; }
  constexpr std::size_t SuggestedCounty() const { return number + 2; }
};
inline constexpr AddressSide kMailingSide{"MAIL_", 0, text_number::kMailing, text_number::kSuggestedMailing};
inline constexpr AddressSide kResidentSide{"RES_", 1, text_number::kResident,
                                           text_number::kSuggestedResident};

/// The commands by their numbers in `mCmdOption`.
namespace option_number {
inline constexpr std::size_t kSave = 0;
inline constexpr std::size_t kClose = 1;
inline constexpr std::size_t kSameAsResident = 2;
inline constexpr std::size_t kSameAsMailing = 3;
}  // namespace option_number

/// The two kinds of customers, by their numbers in `mOptType`.
namespace type_number {
inline constexpr std::size_t kBusiness = 0;
inline constexpr std::size_t kIndividual = 1;
}  // namespace type_number

inline constexpr const char* kNoSuggestion = "No suggestion available.";
inline constexpr const char* kVerifyAndSave = "Verify && Save";

/// The controls of the dialog in which a customer is maintained.
struct CustomerControls {
  /// `services` outlives the controls.
  explicit CustomerControls(const platform::Services& services);

  std::array<platform::TextField, text_number::kCount> mTxtCust;
  platform::ZEMLO_Phone mPhone;
  platform::ZEMLO_FuelTaxAcct mFuelTaxAcct;
  std::array<composition::ZEMLO_LetterCombo, 2> mCboState;  ///< their code is that of a state

  platform::OptionGroup<2> mOptType{{"Business", "Individual"}};
  platform::Frame mFraType{"Customer Type"};
  platform::Frame mFraCustomer{"Customer"};  ///< name, phone and account
  std::array<platform::Frame, 2> mFraAddress{platform::Frame("Mailing Address"),
                                             platform::Frame("Resident Address")};
  std::array<platform::Frame, 2> mFraFinalist{platform::Frame("Finalist Mailing Address"),
                                              platform::Frame("Finalist Resident Address")};

  // The captions of the name lines, which tell what the line holds.
  platform::Label mLblFirst{"First Name:"};
  platform::Label mLblMiddle{"Middle Name:"};
  platform::Label mLblLast{"Last Name:"};
  platform::Label mLblSuffix{"Suffix:"};
  /// The county's name, its code in the tag: of the mailing and the resident address, then of the suggested
  /// ones.
  std::array<platform::Label, 4> mLblCounty;

  /// The tag holds how the box was filled: "1" ticked, "0" not.
  std::array<platform::CheckBox, 2> mChkReturnMail{platform::CheckBox("Return Mail"),
                                                   platform::CheckBox("Return Mail")};
  std::array<platform::CheckBox, 2> mChkAccept{platform::CheckBox("Accept Finalist "),
                                               platform::CheckBox("Accept Finalist ")};

  std::array<platform::Command, 4> mCmdOption{platform::Command(kVerifyAndSave), platform::Command("Close"),
                                              platform::Command("Same as Resident"),
                                              platform::Command("Same as Mailing")};

  bool IsBusiness() const { return mOptType[type_number::kBusiness].selected(); }
  /// Whether a suggested mailing address is on the form, or the words that there is none.
  bool HasMailingSuggestion() const;
  bool HasResidentSuggestion() const;
  /// Numbers of the suggested fields that differ from what was entered, in more than case and punctuation;
  /// none where no address is suggested.
  std::vector<std::size_t> DifferingFields(const AddressSide& side);
  /// The code of a side's state.
  std::string State(const AddressSide& side) { return mCboState[side.number].Code(); }
  /// Shows a state by its code; one that is in no table stands as it is, to be mended.
  void ShowState(const AddressSide& side, const std::string& code);
  /// A county by its name and its code.
  void ShowCounty(std::size_t label, const std::string& name, const std::string& code);
};

}  // namespace customers
