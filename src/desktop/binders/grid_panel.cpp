#include "desktop/binders/grid_panel.h"

#include <QAction>
#include <QVBoxLayout>

#include "desktop/look/qt_text.h"

namespace desktop {

GridPanel::GridPanel(platform::Grid& grid, const QString& name, platform::ViewSettings& settings,
                     QWidget* parent)
    : QWidget(parent), view_(new GridView(this)) {
  Bind(grid, *view_, name);
  view_->columns().RememberIn(settings, FromQt(name));
  find_ = new GridFindBar(grid, *view_, this);
  view_->find_wanted = [this] { find_->Open(); };
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(find_);
  layout->addWidget(view_, 1);
  AddKey(QKeySequence::Find, &GridFindBar::Open);
  AddKey(QKeySequence::FindNext, &GridFindBar::GoToNext);
  AddKey(QKeySequence::FindPrevious, &GridFindBar::GoToPrevious);
}

void GridPanel::AddKey(const QKeySequence& key, void (GridFindBar::*work)()) {
  auto* action = new QAction(this);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, find_, work);
  addAction(action);
}

void GridPanel::TakeKeysOf(QWidget& area) {
  area.addActions(actions());
}

}  // namespace desktop
