#pragma once

#include <vector>

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

#include "desktop/binders/grid_view.h"
#include "platform/controls/grid_search.h"

namespace desktop {

/// A line over a list that finds a text in what the list shows, as it is typed: Enter and Shift+Enter go from
/// hit to hit, Esc closes it, and so does Enter where there is one hit only. The keys that move in a list go
/// on in it from the hit. The row of the hit is the selected one. Grid and view outlive it.
/// Decision [found-selected].
class GridFindBar : public QWidget {
 public:
  GridFindBar(platform::Grid& grid, GridView& view, QWidget* parent = nullptr);

  /// Shows the line, with the text that was looked for last.
  void Open();
  void GoToNext();
  void GoToPrevious();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* text, QEvent* event) override;

 private:
  void LayOut();
  void AddButton(const char* caption, const char* name, void (GridFindBar::*work)());
  void Search();
  /// Where columns were hidden or moved meanwhile.
  bool SearchInOtherColumns();
  /// True where the list has no place to go on from: its rows are others since the hits were shown.
  bool StartsAnew();
  void ShowHits();
  void ShowCount();
  void Close();

  platform::Grid& grid_;
  GridView& view_;
  platform::GridSearch search_;
  std::vector<std::size_t> searched_columns_;
  std::size_t from_row_ = 0;
  QLineEdit* text_;
  QLabel* count_;
  QTimer again_;  // rows change in the middle of a paint
  platform::Connection content_changed_;
};

}  // namespace desktop
