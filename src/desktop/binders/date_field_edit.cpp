#include "desktop/binders/date_field_edit.h"

#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include "desktop/binders/binding.h"

namespace desktop {
namespace {

const QDate kFirstDay(1900, 1, 1);

QDate ToQt(platform::Date date) {
  return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))};
}

platform::Date FromQt(QDate date) {
  return platform::Date(std::chrono::year(date.year()), std::chrono::month(unsigned(date.month())),
                        std::chrono::day(unsigned(date.day())));
}

/// Month, day or year is selected wherever the cursor goes, so that what is typed replaces it. (Qt's own edit
/// does so for the Tab key only, takes nothing that is typed into a full section, and skips the day in
/// "02/28".)
class DayEdit : public QDateEdit {
 public:
  explicit DayEdit(QWidget* parent) : QDateEdit(parent) { lineEdit()->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* text, QEvent* event) override {
    if (event->type() != QEvent::MouseButtonRelease || lineEdit()->hasSelectedText())
      return QDateEdit::eventFilter(text, event);
    setSelectedSection(currentSection());
    return false;
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Home) return setSelectedSection(sectionAt(0));
    if (event->key() == Qt::Key_End) return setSelectedSection(sectionAt(sectionCount() - 1));
    if (std::exchange(moved_on_, false) && event->text() == QStringLiteral("/")) return;
    const auto section = currentSection();
    QDateEdit::keyPressEvent(event);
    moved_on_ = event->text() != QStringLiteral("/") && currentSection() != section;
  }

 private:
  bool moved_on_ = false;  // a full section went on to the next one; the slash after it does not once more
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
    field_.SetValue(date ? std::optional(FromQt(*date)) : std::nullopt);
  }
  void ShowDate() {
    const auto& value = field_.value();
    const auto date = value ? std::optional(ToQt(*value)) : std::nullopt;
    if (edit_.date() != date) edit_.SetDate(date);
  }
  void ShowEarliest() {
    if (field_.earliest()) edit_.SetEarliest(ToQt(*field_.earliest()));
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
  if (!ticked) offered_ = edit_->date();
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
