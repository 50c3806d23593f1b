#pragma once

#include <QLayout>
#include <QPushButton>
#include <QScrollArea>

#include "platform/controls/grid.h"
#include "platform/view_settings.h"

namespace desktop {

/// One page of the workspace: its own controls above, the list of results taking what is left. A page that
/// does not fit its window can be scrolled.
class PageView : public QScrollArea {
 public:
  explicit PageView(QWidget* parent = nullptr);

 protected:
  /// Where the page's widgets go.
  QWidget& content() { return *content_; }
  /// The page's list, at the end of `layout`. `name` is the accessible name.
  void AddResults(QBoxLayout& layout, platform::Grid& grid, const char* name,
                  platform::ViewSettings& settings);
  /// Enter in a field presses it, as in a dialog.
  void SetDefaultButton(QPushButton* button) { default_button_ = button; }

  void keyPressEvent(QKeyEvent* event) override;
  QSize minimumSizeHint() const override { return {400, 240}; }

 private:
  QWidget* content_;
  QPushButton* default_button_ = nullptr;
};

}  // namespace desktop
