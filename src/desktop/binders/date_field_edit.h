#pragma once

#include <optional>

#include <QCheckBox>
#include <QDateEdit>
#include <QWidget>

#include "platform/controls/date_field.h"

namespace desktop {

/// A date with a check box before it: an empty date shows no day, and ticking the box offers one.
/// Decision [typed-dates].
class DateFieldEdit : public QWidget {
 public:
  explicit DateFieldEdit(QWidget* parent = nullptr);

  std::optional<QDate> date() const;
  /// Does not tell `changed`.
  void SetDate(std::optional<QDate> date);
  void SetEarliest(QDate earliest);
  /// The name both parts are read out under.
  void SetName(const QString& name);

  QCheckBox& box() { return *box_; }
  QDateEdit& edit() { return *edit_; }

  /// The user chose another date, or none.
  std::function<void()> changed;

 private:
  void BoxClicked(bool ticked);
  void Show(std::optional<QDate> date);

  QCheckBox* box_;
  QDateEdit* edit_;
  QDate offered_ = QDate::currentDate();
};

void Bind(platform::DateField& field, DateFieldEdit& edit);

}  // namespace desktop
