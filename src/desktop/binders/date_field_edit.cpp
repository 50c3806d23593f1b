#include "desktop/binders/date_field_edit.h"

#include <array>
#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>

#include "desktop/binders/binding.h"

namespace desktop {
namespace {

const QDate kFirstDay(1900, 1, 1);

QDate QtDateOf(platform::Date date) {
  return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))};
}

platform::Date DateOf(QDate date) {
  return platform::Date(std::chrono::year(date.year()), std::chrono::month(unsigned(date.month())),
                        std::chrono::day(unsigned(date.day())));
}

/// A date is typed over the one that was there, whatever of it is selected: all of it, some of it, or the
/// place of the cursor. Erasing several sections leaves no day. (Qt's own edit keeps the month of a date that
/// is selected whole, takes nothing once it is erased or typed into a full section, skips the day in "02/28",
/// and turns "02/29/2024" into the 28th where the year before was no leap year.)
class DayEdit : public QDateEdit {
 public:
  explicit DayEdit(QWidget* parent) : QDateEdit(parent) { lineEdit()->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* text, QEvent* event) override {
    if (event->type() != QEvent::MouseButtonRelease) return QDateEdit::eventFilter(text, event);
    ForgetTyped();
    if (lineEdit()->hasSelectedText()) return QDateEdit::eventFilter(text, event);
    setSelectedSection(currentSection());
    return false;
  }
  void focusInEvent(QFocusEvent* event) override {
    ForgetTyped();
    QDateEdit::focusInEvent(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const auto& text = event->text();
    if (text.size() == 1 && text.front().isDigit()) return TypeDigit(event);
    if (text == QStringLiteral("/")) {
      keys_ += text;
      if (!BeginsWithMonth() && !std::exchange(moved_on_, false)) QDateEdit::keyPressEvent(event);
      return;
    }
    ForgetTyped();
    const bool erases = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
    if (erases && SelectsSeveral()) return Erase();
    if (event->key() == Qt::Key_Home) return setSelectedSection(sectionAt(0));
    if (event->key() == Qt::Key_End) return setSelectedSection(sectionAt(sectionCount() - 1));
    QDateEdit::keyPressEvent(event);
  }

 private:
  void TypeDigit(QKeyEvent* digit) {
    ChooseSection();
    const auto section = Section();
    if (keys_.isEmpty()) {
      before_ = date();
      began_with_month_ = section == 0;
    }
    keys_ += digit->text();
    QDateEdit::keyPressEvent(digit);
    moved_on_ = Section() != section;
    typed_.at(section) += digit->text();
    TakeTyped();
  }
  /// Where the digit goes: over what is selected, or over the section that the cursor stands in.
  void ChooseSection() {
    if (lineEdit()->text().trimmed().isEmpty()) {
      setDate(date() == minimumDate() ? erased_ : date());
      StartAt(0);
    } else if (SelectsSeveral()) {
      StartAt(Section());
    } else if (typed_.at(Section()).isEmpty()) {
      Select(Section());
    }
  }
  /// A second slash tells that a whole date is typed, though day or year was selected: what they have got of
  /// it goes to month and day.
  bool BeginsWithMonth() {
    static const QRegularExpression kMonthAndDay(QStringLiteral("^(\\d{1,2})/(\\d{1,2})/$"));
    const auto keys = kMonthAndDay.match(keys_);
    if (began_with_month_ || !keys.hasMatch()) return false;
    typed_ = {keys.captured(1), keys.captured(2), {}};
    const QDate day(before_.year(), typed_[0].toInt(), typed_[1].toInt());
    setDate(day.isValid() ? day : before_);
    began_with_month_ = true;
    moved_on_ = false;
    Select(2);
    return true;
  }
  /// A day that the date before did not have, once its year is there.
  void TakeTyped() {
    const auto& [month, day, year] = typed_;
    if (year.size() != 4) return;
    const QDate typed(year.toInt(), month.toInt(), day.toInt());
    if (!typed.isValid() || typed == date()) return;
    setDate(typed);
    lineEdit()->end(/*mark=*/false);
  }
  void Erase() {
    erased_ = date();
    setDate(minimumDate());
  }
  void StartAt(std::size_t section) {
    ForgetTyped();
    Select(section);
  }
  void Select(std::size_t section) { setSelectedSection(sectionAt(static_cast<int>(section))); }
  void ForgetTyped() {
    typed_.fill({});
    keys_.clear();
    moved_on_ = false;
  }
  bool SelectsSeveral() const { return lineEdit()->selectedText().contains(QLatin1Char('/')); }
  /// Where the selection starts, or the cursor stands: 0 month, 1 day, 2 year. (Qt's own does not follow a
  /// cursor that the mouse or an arrow key has moved.)
  std::size_t Section() const {
    const auto* line = lineEdit();
    const int place = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
    return static_cast<std::size_t>(line->text().left(place).count(QLatin1Char('/')));
  }

  // Since the last key that was no part of a date.
  std::array<QString, 3> typed_;  // month, day, year
  QString keys_;                  // all of them, slashes too
  QDate before_;                  // the date at the first of them
  bool began_with_month_ = false;
  bool moved_on_ = false;  // a full section went on to the next one; the slash after it does not once more
  QDate erased_ = QDate::currentDate();
};

class DateFieldBinding : public Binding {
 public:
  DateFieldBinding(platform::DateField& field, DateFieldEdit& edit)
      : Binding(field, edit), field_(field), edit_(edit) {
    edit_.changed = [this] { TakeDate(); };
    Keep(field_.Changed.Connect([this] { ShowDate(); }));
    Keep(field_.LookChanged.Connect([this] { ShowEarliest(); }));
    ShowEarliest();
    ShowDate();
  }

 private:
  void TakeDate() {
    const auto date = edit_.date();
    field_.SetValue(date ? std::optional(DateOf(*date)) : std::nullopt);
  }
  void ShowDate() {
    const auto& value = field_.value();
    const auto date = value ? std::optional(QtDateOf(*value)) : std::nullopt;
    if (edit_.date() != date) edit_.SetDate(date);
  }
  void ShowEarliest() {
    if (field_.earliest()) edit_.SetEarliest(QtDateOf(*field_.earliest()));
  }

  platform::DateField& field_;
  DateFieldEdit& edit_;
};

}  // namespace

DateFieldEdit::DateFieldEdit(QWidget* parent)
    : QWidget(parent), box_(new QCheckBox(this)), edit_(new DayEdit(this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(box_);
  layout->addWidget(edit_, 1);
  setFocusPolicy(Qt::StrongFocus);  // a caption's mnemonic goes to no field without
  setFocusProxy(box_);

  edit_->setCalendarPopup(true);
  edit_->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
  edit_->setSpecialValueText(QStringLiteral(" "));  // the day before the earliest one stands for no day
  SetEarliest(kFirstDay);
  Show({});
  connect(box_, &QCheckBox::clicked, this, [this](bool ticked) { BoxClicked(ticked); });
  connect(edit_, &QDateEdit::dateChanged, this, [this] {
    if (changed) changed();
  });
  connect(edit_, &QDateEdit::editingFinished, this, [this] {
    if (!date()) Show({});  // it was erased
  });
}

std::optional<QDate> DateFieldEdit::date() const {
  if (!box_->isChecked() || edit_->date() == edit_->minimumDate()) return {};
  return edit_->date();
}

void DateFieldEdit::SetDate(std::optional<QDate> date) {
  if (date) offered_ = *date;
  Show(date);
}

void DateFieldEdit::SetEarliest(QDate earliest) {
  const auto date = this->date();
  const QSignalBlocker quiet(edit_);
  edit_->setMinimumDate(earliest.addDays(-1));
  Show(date);
}

void DateFieldEdit::SetName(const QString& name) {
  box_->setAccessibleName(QStringLiteral("Use ") + name);
  edit_->setAccessibleName(name);
}

void DateFieldEdit::BoxClicked(bool ticked) {
  if (!ticked && edit_->date() != edit_->minimumDate()) offered_ = edit_->date();
  Show(ticked ? std::optional(offered_) : std::nullopt);
  if (changed) changed();
}

void DateFieldEdit::Show(std::optional<QDate> date) {
  const QSignalBlocker quiet(edit_);
  box_->setChecked(date.has_value());
  edit_->setEnabled(date.has_value());
  edit_->setDate(date.value_or(edit_->minimumDate()));
}

void Bind(platform::DateField& field, DateFieldEdit& edit) {
  new DateFieldBinding(field, edit);
}

}  // namespace desktop
