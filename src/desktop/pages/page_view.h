#pragma once

#include <vector>

#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>

#include "desktop/binders/grid_view.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"
#include "platform/parties/view_settings.h"

namespace desktop {

/// One page of the workspace: its own controls above, the list of results taking what is left. A page that
/// does not fit its window can be scrolled.
///
/// Where Enter in a field has brought new results, the keyboard goes on in them: the only one is selected, of
/// several the first arrow selects the first. Without any it goes back to the field.
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

  /// While the frame's actions are held back the keyboard is in the list, whose letters they were about.
  /// Comes before the frame is bound to `box`: a widget that is disabled gives the keyboard to whatever comes
  /// next.
  void HandOnKeyboardOf(platform::Frame& frame, QWidget& box);

  void keyPressEvent(QKeyEvent* event) override;
  QSize minimumSizeHint() const override { return {400, 240}; }

 private:
  void PressDefaultButton();
  void ResultsChanged();
  void GoOnInResults();

  QWidget* content_;
  QPushButton* default_button_ = nullptr;
  platform::Grid* grid_ = nullptr;
  GridView* results_ = nullptr;
  // From Enter to the results that it brings.
  bool awaits_results_ = false;
  bool has_results_ = false;
  QPointer<QWidget> left_field_;
  std::vector<platform::Connection> connections_;
};

}  // namespace desktop
