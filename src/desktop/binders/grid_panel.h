#pragma once

#include <QWidget>

#include "desktop/binders/grid_find_bar.h"

namespace desktop {

/// A list of results: its rows, and a line to find a text in them (Ctrl+F; F3 goes on). What the user makes
/// of its columns is remembered under the list's name. Grid and settings outlive it.
class GridPanel : public QWidget {
 public:
  GridPanel(platform::Grid& grid, const QString& name, platform::ViewSettings& settings,
            QWidget* parent = nullptr);

  GridView& view() { return *view_; }
  /// The keys work while the keyboard is in `area` too, which the panel is inside.
  void TakeKeysOf(QWidget& area);

 private:
  void AddKey(const QKeySequence& key, void (GridFindBar::*work)());

  GridView* view_;
  GridFindBar* find_;
};

}  // namespace desktop
