#pragma once

#include <QWidget>

namespace desktop {

/// The mark of a field that is wrong: a thick border with a filled corner, and why it is wrong as its tool
/// tip and as the description for those who listen.
///
/// It lies over the field as a child of it and lets the mouse through, so that it looks the same on every
/// kind of widget and keeps the field's own colours readable in a light and in a dark palette.
/// Decision [invalid-overlay].
class InvalidMark : public QWidget {
 public:
  /// Puts the mark on `field` or takes it off. An empty reason is the general one.
  static void Show(QWidget& field, bool invalid, const QString& reason = {});
  static bool IsOn(const QWidget& field);

 protected:
  bool eventFilter(QObject* field, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  explicit InvalidMark(QWidget& field);
  static InvalidMark* Of(const QWidget& field);
};

}  // namespace desktop
