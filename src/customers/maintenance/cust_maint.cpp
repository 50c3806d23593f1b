#include "customers/maintenance/cust_maint.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace customers {

namespace {

constexpr std::string_view kAdd = "ADD";
constexpr std::string_view kUpdate = "UPD";

std::string Name(const CustomerControls& controls) {
  const auto& fields = controls.mTxtCust;
  if (controls.IsBusiness()) return fields[text_number::kBusinessName].text();
  return fields[text_number::kFirstName].text() + " " + fields[text_number::kLastName].text();
}

std::string InCapitals(std::string_view text) {
  return platform::UpperCase(platform::Trim(text));
}

}  // namespace

ZEMLO_CustMaint::ZEMLO_CustMaint(const platform::Services& services, std::string message_title)
    : Form("Maintain Customer"),
      CustomerControls(services),
      services_(services),
      message_title_(std::move(message_title)),
      filters_(services),
      rules_({services, *this, message_title_, DataChanged, [this] { return OrigResAddr(); },
              [this] { return is_saving_; }}),
      changes_(*this, opening_),
      mVemtMessage_(services.messages.NewListener()) {
  filters_.Govern(*this);
  mCmdOption[option_number::kSave].why_disabled = [this] { return WhyNoSave(); };
  for (const auto side : {kMailingSide, kResidentSide}) {
    const auto copies =
        side.number == kMailingSide.number ? option_number::kSameAsMailing : option_number::kSameAsResident;
    mCmdOption[copies].why_disabled = [] { return "The other address has to be complete first."; };
  }
  Connect();
}

ZEMLO_CustMaint::~ZEMLO_CustMaint() = default;

void ZEMLO_CustMaint::Connect() {
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  for (auto& field : mTxtCust) keep(field.Changed.Connect([this] { TextChanged(); }));
  for (const auto& side : {kMailingSide, kResidentSide})
    keep(mTxtCust[side.Zip()].Changed.Connect([this, side] { ShowCountyOfZip(side); }));
  for (auto& list : mCboState) {
    keep(list.ContentChanged.Connect([this] { RunChecks(); }));
    keep(list.Left.Connect([this] { RunChecks(); }));
  }
  for (platform::NumberField* number :
       {static_cast<platform::NumberField*>(&mPhone), static_cast<platform::NumberField*>(&mFuelTaxAcct)}) {
    keep(number->Changed.Connect([this] { RunChecks(); }));
    keep(number->LostFocus.Connect([this] { RunChecks(); }));
  }
  for (auto& box : mChkReturnMail) {
    keep(box.Click.Connect([this] {
      DataChanged = true;
      RunChecks();
    }));
  }
  for (auto& option : mOptType) keep(option.Click.Connect([this] { ArrangeForType(); }));
  for (std::size_t number = 0; number < mCmdOption.size(); ++number)
    keep(mCmdOption[number].Click.Connect([this, number] { mCmdOption_Click(number); }));
  keep(mVemtMessage_->DataReady.Connect([this](const std::string& name) { vemtMessage_DataReady(name); }));
  keep(mVemtMessage_->MsgTimeout.Connect([this] { vemtMessage_MsgTimeout(); }));
}

void ZEMLO_CustMaint::SetCustomerType(std::string_view type) {
  Procedure("SetCustomerType", [&] {
    for (auto& option : mOptType) option.SetEnabled(true);
    const auto wanted = InCapitals(type);
    if (wanted == "B") mOptType[type_number::kBusiness].SetSelected(true);
    if (wanted == "I") mOptType[type_number::kIndividual].SetSelected(true);
    mFraType.SetEnabled(false);
  });
}

std::string ZEMLO_CustMaint::SetCustomerType() {
  std::string type;
  Procedure("SetCustomerType", [&] {
    ArrangeForType();
    ForgetSuggestions();
    const bool is_individual = mOptType[type_number::kIndividual].selected();
    type = IsBusiness() ? "B" : is_individual ? "I" : "";
  });
  return type;
}

void ZEMLO_CustMaint::SetCustomerMode(std::string_view mode) {
  Procedure("SetCustomerMode", [&] {
    mode_ = InCapitals(mode);
    const bool is_known = mode_ == kAdd || mode_ == kUpdate;
    SetCaption(mode_ == kAdd      ? "Adding New Customer " + Name(*this)
               : mode_ == kUpdate ? "Updating Selected Customer " + Name(*this)
                                  : "Maintain Customer");
    if (!is_known) return;
    for (auto& option : mOptType) option.SetEnabled(option.selected());
  });
}

void ZEMLO_CustMaint::SetupCustomerForm(const std::vector<std::string>& seeds) {
  Procedure("FillBusinessAdd", [&] {
    if (seeds.size() < 2) return;
    mTxtCust[text_number::kBusinessName].SetText(seeds[0]);
    mFuelTaxAcct.SetText(seeds[1]);
    if (seeds.size() > 2) mTxtCust[kMailingSide.City()].SetText(seeds[2]);
  });
}

void ZEMLO_CustMaint::FillIndividualAdd(const std::vector<std::string>& seeds) {
  Procedure("FillIndividualAdd", [&] {
    if (seeds.size() < 2) return;
    mTxtCust[text_number::kFirstName].SetText(seeds[0]);
    mTxtCust[text_number::kLastName].SetText(seeds[1]);
    if (seeds.size() > 2) mFuelTaxAcct.SetText(seeds[2]);
    if (seeds.size() > 3) mTxtCust[kMailingSide.City()].SetText(seeds[3]);
  });
}

void ZEMLO_CustMaint::ArrangeForType() {
  if (IsBusiness()) {
    ProcessBusiness();
  } else {
    ProcessIndividual();
  }
  SetTabs();
  RunChecks();
}

void ZEMLO_CustMaint::ProcessBusiness() {
  Procedure("ProcessBusiness", [&] {
    mLblFirst.SetCaption("Business Name:");
    mLblLast.SetCaption("Contact Name:");
    ShowNames(/*business=*/true);
  });
}

void ZEMLO_CustMaint::ProcessIndividual() {
  Procedure("ProcessIndividual", [&] {
    mLblFirst.SetCaption("First Name:");
    mLblLast.SetCaption("Last Name:");
    ShowNames(/*business=*/false);
  });
}

void ZEMLO_CustMaint::ShowNames(bool business) {
  for (auto field = text_number::kFirstName; field <= text_number::kContactName; ++field)
    mTxtCust[field].SetVisible(business == (field >= text_number::kBusinessName));
  mLblMiddle.SetVisible(!business);
  mLblSuffix.SetVisible(!business);
}

void ZEMLO_CustMaint::ForgetSuggestions() {
  for (auto field = kMailingSide.SuggestedLine1(); field < mTxtCust.size(); ++field)
    mTxtCust[field].SetText("");
  for (std::size_t county = 0; county < mLblCounty.size(); ++county) ShowCounty(county, "", "");
}

void ZEMLO_CustMaint::SetTabs() {
  std::vector<platform::Control*> order;
  const auto text = [&](std::size_t number) { order.push_back(&mTxtCust.at(number)); };
  if (IsBusiness()) {
    text(text_number::kBusinessName);
    text(text_number::kContactName);
  } else {
    for (auto field = text_number::kFirstName; field <= text_number::kSuffix; ++field) text(field);
  }
  order.push_back(&mPhone);
  order.push_back(&mFuelTaxAcct);
  for (const auto& side : {kMailingSide, kResidentSide}) {
    text(side.Line1());
    text(side.Line2());
    text(side.City());
    order.push_back(&mCboState[side.number]);
    text(side.Zip());
  }
  if (order == tab_order_) return;
  tab_order_ = std::move(order);
  TabOrderChanged();
}

void ZEMLO_CustMaint::MoveFocus(platform::Control& control) {
  if (control.enabled() && control.visible()) FocusWanted(control);
}

void ZEMLO_CustMaint::OnLoad() {
  Procedure("Form_Load", [&] { CentreWanted(); });
}

void ZEMLO_CustMaint::OnActivate() {
  Procedure("Form_Activate", [&] {
    TakeSnapshot(opening_, ResidentItems::kAlways);
    KeepCounties();
    DataChanged = false;  // what filled the fields was not the user
    for (auto& frame : mFraFinalist) frame.SetEnabled(false);
    EnableControls(true);
    SetTabs();
    MoveFocus(mTxtCust[IsBusiness() ? text_number::kBusinessName : text_number::kFirstName]);
    RunChecks();
  });
}

bool ZEMLO_CustMaint::OnQueryUnload() {
  if (!shown()) return true;
  // The close box does what "Close" does; hidden is how the dialog closes.
  mCmdOption[option_number::kClose].UserClicks();
  return false;
}

void ZEMLO_CustMaint::OnUnload() {
  Procedure("Form_Unload", [&] {
    message_.reset();
    opening_.clear();
    current_.clear();
  });
}

std::string ZEMLO_CustMaint::WhyNoSave() const {
  if (is_saving_) return "The customer is being saved.";
  if (!rules_.errors().empty()) return std::string(platform::TrimBlanks(rules_.errors()));
  return "Nothing was changed yet. (A changed phone, account or state is saved together with a changed text "
         "or \"Return Mail\" box.)";
}

}  // namespace customers
