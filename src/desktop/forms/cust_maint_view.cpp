#include "desktop/forms/cust_maint_view.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/binders/check_box_binding.h"
#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/pick_list_field.h"
#include "desktop/binders/text_field_binding.h"
#include "desktop/look/qt_text.h"

namespace desktop {

namespace text_number = customers::text_number;
namespace option_number = customers::option_number;

using customers::AddressSide;
using customers::kMailingSide;
using customers::kResidentSide;

/// What an address's fields are called, with their mnemonics, and are read out as.
struct CustMaintView::SideCaptions {
  const char* line;
  const char* city;
  const char* state;
  const char* zip;
  const char* read_as;
  std::size_t copy;  ///< number of the command beside it
  char copy_mnemonic;
  char returned_mnemonic;
};
const CustMaintView::SideCaptions CustMaintView::kMailingCaptions{
    "&Address:", "Cit&y:", "&State:", "&Zip:", "Mailing", option_number::kSameAsResident, 'R', 'u'};
const CustMaintView::SideCaptions CustMaintView::kResidentCaptions{
    "A&ddress:", "&City:", "Stat&e:", "Z&ip:", "Resident", option_number::kSameAsMailing, 'g', '\0'};

namespace {

constexpr auto kWidestPhone = "(000) 000-0000 ";
constexpr auto kWidestAccount = "00-000000000-00 ";
constexpr auto kWidestZip = "00000-0000 ";
// What can be longer, as far as a screen of 800 points has room for it all.
constexpr auto kLongLastName = "MERRIWEATHER-LEE";
constexpr auto kLongSuggestion = "1200 FEATHERSTONE BLVD NW";
constexpr auto kDiffers = "Differs from the address entered.";
constexpr auto kReturnedGoes =
    "Mail came back from this address. The mark goes by itself when another address that passes the "
    "verification is saved.";

/// The text is seen whole. (A line edit's own hint is for seventeen letters "x".)
void KeepWide(QLineEdit& edit, const char* text) {
  const auto wide = [&](const QString& shown) { return edit.fontMetrics().horizontalAdvance(shown); };
  const int around = edit.sizeHint().width() - wide(QString(17, QLatin1Char('x')));
  edit.setMinimumWidth(around + wide(QLatin1String(text)));
}

QLabel* MakeDifferenceMark() {
  auto* mark = new QLabel(QStringLiteral("\u2260"));
  mark->setToolTip(QLatin1String(kDiffers));
  mark->setAccessibleName(QLatin1String(kDiffers));
  auto policy = mark->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  mark->setSizePolicy(policy);
  mark->hide();
  return mark;
}

}  // namespace

CustMaintView::CustMaintView(customers::ZEMLO_CustMaint& form, QWidget* parent)
    : QWidget(parent), form_(form) {
  LayOut();
  SetTabs();
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  keep(form_.TabOrderChanged.Connect([this] { SetTabs(); }));
  keep(form_.CentreWanted.Connect([this] { Centre(); }));
  keep(form_.FocusWanted.Connect([this](platform::Control& control) {
    if (const auto widget = widgets_.find(&control); widget != widgets_.end()) widget->second->setFocus();
  }));
  for (std::size_t field = kMailingSide.Line1(); field < form_.mTxtCust.size(); ++field)
    keep(form_.mTxtCust[field].Changed.Connect([this] { MarkDifferences(); }));
  MarkDifferences();
}

void CustMaintView::LayOut() {
  auto* save = MakeButton(form_.mCmdOption[option_number::kSave], this, 'v');
  auto* close = MakeButton(form_.mCmdOption[option_number::kClose], this, 'o');
  save->setDefault(true);
  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(save);
  ends->addWidget(close);

  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(MakeCustomer(), 0, 0);
  layout->addWidget(MakeType(), 0, 1);
  layout->addWidget(MakeEntered(kMailingSide, kMailingCaptions), 1, 0);
  layout->addWidget(MakeSuggested(kMailingSide, kMailingCaptions), 1, 1);
  layout->addWidget(MakeEntered(kResidentSide, kResidentCaptions), 2, 0);
  layout->addWidget(MakeSuggested(kResidentSide, kResidentCaptions), 2, 1);
  layout->addLayout(ends, 3, 0, 1, 2);
  layout->setColumnStretch(0, 1);
  layout->setColumnStretch(1, 1);
  layout->setRowStretch(4, 1);
  after_fields_.push_back(save);
  after_fields_.push_back(close);
}

QGroupBox* CustMaintView::MakeType() {
  auto* box = new QGroupBox(this);
  Bind(form_.mFraType, *box);
  auto* options = new QGridLayout;
  AddOptions(form_.mOptType, OptionRadio::Arrows::kChoose, *options);
  auto* layout = new QVBoxLayout(box);
  layout->addLayout(options);
  layout->addStretch();
  return box;
}

QLineEdit* CustMaintView::MakeText(std::size_t number, const QString& name) {
  auto* edit = new QLineEdit(this);
  auto& field = form_.mTxtCust.at(number);
  Bind(field, *edit);
  edit->setAccessibleName(name);
  edit->installEventFilter(this);
  widgets_[&field] = edit;
  return edit;
}

void CustMaintView::ShowCaption(platform::Label& label, QLabel& caption, std::vector<std::size_t> fields,
                                std::string_view mnemonics) {
  const auto show = [this, &label, &caption, fields = std::move(fields), mnemonics] {
    auto text = ToQt(label.caption());
    for (std::size_t place = 0; place < fields.size(); ++place) {
      auto& field = form_.mTxtCust.at(fields[place]);
      if (!field.visible()) continue;
      auto* edit = widgets_.at(&field);
      edit->setAccessibleName(QString(text).remove(QLatin1Char(':')));
      caption.setBuddy(edit);
      if (const auto at = text.indexOf(QLatin1Char(mnemonics.at(place))); at >= 0)
        text.insert(at, QLatin1Char('&'));
    }
    caption.setText(text);
    caption.setVisible(label.visible());
  };
  connections_.push_back(label.LookChanged.Connect(show));
  for (const auto number : {text_number::kFirstName, text_number::kBusinessName})
    connections_.push_back(form_.mTxtCust.at(number).LookChanged.Connect(show));
  show();
}

QGroupBox* CustMaintView::MakeCustomer() {
  auto* box = new QGroupBox(this);
  Bind(form_.mFraCustomer, *box);
  auto* layout = new QGridLayout(box);
  struct Line {
    platform::Label& label;
    std::vector<std::size_t> fields;
    std::string_view mnemonics;
    int row;
    int column;
    int span;
  };
  const Line lines[] = {
      {form_.mLblFirst, {text_number::kFirstName, text_number::kBusinessName}, "FB", 0, 0, 1},
      {form_.mLblMiddle, {text_number::kMiddleName}, "M", 0, 2, 1},
      {form_.mLblLast, {text_number::kLastName, text_number::kContactName}, "LN", 1, 0, 1},
      {form_.mLblSuffix, {text_number::kSuffix}, "x", 1, 2, 1},
  };
  for (const auto& line : lines) {
    auto* caption = new QLabel(box);
    layout->addWidget(caption, line.row, line.column);
    for (const auto number : line.fields) {
      const bool whole_line = number == text_number::kBusinessName || number == text_number::kContactName;
      auto* edit = MakeText(number, {});
      if (number == text_number::kLastName) KeepWide(*edit, kLongLastName);
      layout->addWidget(edit, line.row, line.column + 1, 1, whole_line ? 3 : 1);
    }
    ShowCaption(line.label, *caption, line.fields, line.mnemonics);
  }
  auto* phone = new QLineEdit(box);
  Bind(form_.mPhone, *phone);
  phone->installEventFilter(this);
  AddField(*layout, 2, 0, "&Phone #:", *phone);
  widgets_[&form_.mPhone] = phone;
  auto* account = new QLineEdit(box);
  Bind(form_.mFuelTaxAcct, *account);
  account->installEventFilter(this);
  AddField(*layout, 2, 2, "Fuel &Tax Acct #:", *account);
  widgets_[&form_.mFuelTaxAcct] = account;
  KeepWide(*phone, kWidestPhone);
  KeepWide(*account, kWidestAccount);
  layout->setColumnStretch(1, 1);
  layout->setColumnStretch(3, 1);
  return box;
}

QGroupBox* CustMaintView::MakeEntered(const AddressSide& side, const SideCaptions& captions) {
  auto* box = new QGroupBox(this);
  Bind(form_.mFraAddress[side.number], *box);
  auto* layout = new QGridLayout(box);
  const auto name = [&](const char* what) {
    return QStringLiteral("%1 %2").arg(QLatin1String(captions.read_as), QLatin1String(what));
  };
  const auto add = [&](int row, int column, const char* caption, QWidget& field, const QString& read_as) {
    AddField(*layout, row, column, caption, field);
    field.setAccessibleName(read_as);
  };
  add(0, 0, captions.line, *MakeText(side.Line1(), {}), name("address"));
  layout->addWidget(MakeText(side.Line2(), name("address, second line")), 1, 1);
  add(2, 0, captions.city, *MakeText(side.City(), {}), name("city"));
  auto* state = new PickListField(this);
  state->setAccessibleName(name("state"));
  Bind(form_.mCboState[side.number], *state);
  widgets_[&form_.mCboState[side.number]] = state;
  add(3, 0, captions.state, *state, name("state"));
  auto* zip = MakeText(side.Zip(), {});
  KeepWide(*zip, kWidestZip);
  add(3, 2, captions.zip, *zip, name("zip"));
  for (const int row : {0, 1, 2}) {
    auto* item = layout->itemAtPosition(row, 1)->widget();
    layout->addWidget(item, row, 1, 1, 3);
  }
  AddShown(*layout, 4, 0, "County:", form_.mLblCounty[side.number]);
  auto* returned = new QCheckBox(this);
  returned->setAccessibleName(name("return mail"));
  Bind(form_.mChkReturnMail[side.number], *returned, captions.returned_mnemonic);
  returned->setToolTip(QLatin1String(kReturnedGoes));
  auto* copy = MakeButton(form_.mCmdOption[captions.copy], this, captions.copy_mnemonic);
  auto* row = new QHBoxLayout;
  row->addWidget(returned);
  row->addStretch();
  row->addWidget(copy);
  layout->addLayout(row, 5, 0, 1, 4);
  layout->setColumnStretch(1, 2);
  layout->setColumnStretch(3, 1);
  after_fields_.push_back(returned);
  after_fields_.push_back(copy);
  return box;
}

void CustMaintView::AddSuggested(QGridLayout& layout, int row, const char* caption, std::size_t number) {
  const auto place = number >= text_number::kSuggestedResident ? "Suggested resident" : "Suggested mailing";
  const auto what = QString::fromLatin1(caption).remove(QLatin1Char(':')).toLower();
  auto* edit = MakeText(
      number, QStringLiteral("%1 %2").arg(QLatin1String(place),
                                          what.isEmpty() ? QStringLiteral("address, second line") : what));
  KeepWide(*edit, kLongSuggestion);
  auto* mark = MakeDifferenceMark();
  difference_marks_[number] = mark;
  layout.addWidget(new QLabel(QLatin1String(caption)), row, 0);
  layout.addWidget(edit, row, 1);
  layout.addWidget(mark, row, 2);
}

QGroupBox* CustMaintView::MakeSuggested(const AddressSide& side, const SideCaptions& captions) {
  auto* box = new QGroupBox(this);
  Bind(form_.mFraFinalist[side.number], *box);
  auto* layout = new QGridLayout(box);
  AddSuggested(*layout, 0, "Address:", side.SuggestedLine1());
  AddSuggested(*layout, 1, "", side.SuggestedLine2());
  AddSuggested(*layout, 2, "City:", side.SuggestedCity());
  AddSuggested(*layout, 3, "State:", side.SuggestedState());
  AddSuggested(*layout, 4, "Zip:", side.SuggestedZip());
  AddShown(*layout, 5, 0, "County:", form_.mLblCounty[side.SuggestedCounty()]);
  auto* accept = new QCheckBox(this);
  accept->setAccessibleName(QStringLiteral("%1: accept Finalist").arg(QLatin1String(captions.read_as)));
  Bind(form_.mChkAccept[side.number], *accept);
  layout->addWidget(accept, 6, 0, 1, 3);
  layout->setColumnStretch(1, 1);
  after_fields_.push_back(accept);
  widgets_[&form_.mChkAccept[side.number]] = accept;
  return box;
}

void CustMaintView::MarkDifferences() {
  for (const auto& side : {kMailingSide, kResidentSide}) {
    const auto differing = form_.DifferingFields(side);
    for (auto number = side.SuggestedLine1(); number <= side.SuggestedZip(); ++number) {
      const bool differs = std::ranges::find(differing, number) != differing.end();
      auto* edit = widgets_.at(&form_.mTxtCust[number]);
      auto font = edit->font();
      font.setBold(differs);
      edit->setFont(font);
      edit->setAccessibleDescription(differs ? QLatin1String(kDiffers) : QString());
      difference_marks_.at(number)->setVisible(differs);
    }
  }
}

void CustMaintView::SetTabs() {
  QWidget* before = nullptr;
  const auto next = [&before](QWidget* widget) {
    if (before != nullptr) setTabOrder(before, widget);
    before = widget;
  };
  for (const auto* control : form_.tab_order()) next(widgets_.at(control));
  for (auto* widget : after_fields_) next(widget);
}

bool CustMaintView::eventFilter(QObject* watched, QEvent* event) {
  auto* edit = qobject_cast<QLineEdit*>(watched);
  // After the mouse has placed the cursor.
  if (edit != nullptr && event->type() == QEvent::FocusIn)
    QTimer::singleShot(0, edit, [edit] { edit->selectAll(); });
  return QWidget::eventFilter(watched, event);
}

void CustMaintView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  form_.Load();  // says where it stands, before it is seen
}

void CustMaintView::Centre() {
  auto place = window()->frameGeometry();
  place.moveCenter(screen()->availableGeometry().center());
  window()->move(place.topLeft());
}

}  // namespace desktop
