#pragma once

#include <map>
#include <string>
#include <vector>

#include <QTableView>
#include <QTimer>

#include "desktop/binders/grid_model.h"
#include "platform/parties/view_settings.h"

namespace desktop {

/// Which columns of a list are shown, how wide, and in which order: as the grid says, then as the user says,
/// whose choice can be remembered. A column that the grid hides is never offered to the user.
///
/// Sections are the model's columns. Part of its view, which has its model and heading already.
/// Decision [list-layout].
class GridColumns {
 public:
  GridColumns(QTableView& view, const GridModel& model);
  ~GridColumns();
  GridColumns(const GridColumns&) = delete;
  GridColumns& operator=(const GridColumns&) = delete;

  /// Shows what was remembered under `name`, and remembers what the user changes from here on. The settings
  /// outlive the view.
  void RememberIn(platform::ViewSettings& settings, const std::string& name);

  /// The grid's columns may be others now.
  void Refresh();
  /// Columns that the user has not sized get the width their headings and the rows in sight ask for, within
  /// reason: once, with the first rows.
  void Fit();
  /// The last column takes what is left of the view; a wide view shows columns that a narrow one has no room
  /// for.
  void Fill();

  bool IsOffered(int section) const { return !model_.column(section).hidden; }
  /// One column always stays.
  bool CanHide(int section) const;
  /// Those that are seen, in the order they stand in.
  std::vector<int> Shown() const;

  // What the user does.
  void SetShown(int section, bool shown);
  void ShowAll();
  void FitToContents(int section);
  /// As if the user had never changed anything.
  void Reset();

 private:
  class Arranging;

  /// As the user says, else as the grid says.
  bool IsShown(int section) const;
  bool IsShownAtFirst(int section) const;
  void Choose(int section, bool shown);
  const std::string& KeyOf(int section) const { return model_.column(section).key; }
  int WidthOf(int section);
  void Resized(int section, int width);
  void Changed();
  std::string AsText() const;
  void Read(const std::string& text);
  void Order(const std::vector<std::string>& keys);
  void Save();

  QTableView& view_;
  const GridModel& model_;
  platform::ViewSettings* settings_ = nullptr;
  std::string name_;
  std::map<std::string, int> user_widths_;
  std::map<std::string, bool> user_shown_;  // what the user chose otherwise than the grid
  std::vector<int> fitted_widths_;          // by section; none until there were rows to fit
  bool wide_ = false;                       // as the view was when its columns were last filled in
  bool arranging_ = false;                  // what changes now is not the user's doing
  QTimer save_soon_;
};

}  // namespace desktop
