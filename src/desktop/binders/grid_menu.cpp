#include "desktop/binders/grid_menu.h"

#include <functional>

#include <QApplication>
#include <QClipboard>

#include "desktop/binders/grid_view.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

QAction* Add(QMenu& menu, const QString& caption, std::function<void()> work, const QKeySequence& key = {}) {
  auto* action = menu.addAction(caption);
  action->setShortcut(key);  // shown only: the view takes the key itself
  QObject::connect(action, &QAction::triggered, &menu, std::move(work));
  return action;
}

/// In a menu "&" would mark a mnemonic.
QString CaptionOf(const GridView& view, int section) {
  auto caption = view.model()->headerData(section, Qt::Horizontal).toString();
  return caption.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void AddSorting(QMenu& menu, GridView& view, int section) {
  const auto caption = CaptionOf(view, section);
  Add(
      menu, QStringLiteral("Sort \"%1\" &Ascending").arg(caption),
      [&view, section] { view.SortBy(section, /*descending=*/false); }, GridView::kSortAscending);
  Add(
      menu, QStringLiteral("Sort \"%1\" &Descending").arg(caption),
      [&view, section] { view.SortBy(section, /*descending=*/true); }, GridView::kSortDescending);
}

void AddColumns(QMenu& menu, GridView& view) {
  auto& columns = view.columns();
  for (int section = 0; section < view.model()->columnCount(); ++section) {
    if (!columns.IsOffered(section)) continue;
    const bool shown = !view.isColumnHidden(section);
    auto* action = Add(menu, CaptionOf(view, section),
                       [&columns, section, shown] { columns.SetShown(section, !shown); });
    action->setCheckable(true);
    action->setChecked(shown);
    action->setEnabled(!shown || columns.CanHide(section));
  }
  menu.addSeparator();
  Add(menu, QStringLiteral("Show All Columns"), [&columns] { columns.ShowAll(); });
  Add(menu, QStringLiteral("Usual Columns"), [&columns] { columns.Reset(); });
}

}  // namespace

void FillRowMenu(QMenu& menu, GridView& view, const QModelIndex& cell) {
  auto* copy = Add(
      menu, QStringLiteral("&Copy Rows"), [&view] { view.CopyRows(); }, QKeySequence::Copy);
  copy->setEnabled(view.selectionModel()->hasSelection());
  if (cell.isValid()) {
    const auto text = cell.data().toString();
    Add(menu, QStringLiteral("Copy This C&ell"), [text] {
      QApplication::clipboard()->setText(text);
    })->setEnabled(!text.isEmpty());
  }
  if (view.selectionMode() != QAbstractItemView::SingleSelection) {
    Add(
        menu, QStringLiteral("Select A&ll"), [&view] { view.selectAll(); }, QKeySequence::SelectAll);
  }
  if (view.find_wanted) Add(menu, QStringLiteral("&Find..."), view.find_wanted, QKeySequence::Find);
  menu.addSeparator();
  if (cell.isValid()) AddSorting(menu, view, cell.column());
  AddColumns(*menu.addMenu(QStringLiteral("C&olumns")), view);
}

void FillHeadingMenu(QMenu& menu, GridView& view, int section) {
  if (section >= 0) {
    auto& columns = view.columns();
    AddSorting(menu, view, section);
    Add(menu, QStringLiteral("&Fit to Contents"), [&columns, section] { columns.FitToContents(section); });
    Add(menu, QStringLiteral("&Hide This Column"), [&columns, section] {
      columns.SetShown(section, false);
    })->setEnabled(columns.CanHide(section));
    menu.addSeparator();
  }
  AddColumns(menu, view);
}

}  // namespace desktop
