#include "desktop/pages/workspace_view.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>

#include "desktop/look/qt_text.h"
#include "desktop/pages/batch_page_view.h"
#include "desktop/pages/correspondence_page_view.h"
#include "desktop/pages/tracking_page_view.h"

namespace desktop {

using workspace::PageIndex;
using workspace::PageTabs;

WorkspaceView::WorkspaceView(workspace::Pages& pages, platform::ViewSettings& settings, QWidget* parent)
    : QTabWidget(parent) {
  addTab(new CorrespondencePageView(pages.correspondence, settings), ToQt(PageTabs::kCaptions[0]));
  addTab(new TrackingPageView(pages.tracking, settings), ToQt(PageTabs::kCaptions[1]));
  addTab(new BatchPageView(pages.batch, settings), ToQt(PageTabs::kCaptions[2]));
  setAccessibleName(QStringLiteral("Correspondence"));

  auto& tabs = pages.tabs;
  const auto show = [this, &tabs] { setCurrentIndex(static_cast<int>(tabs.current())); };
  turned_ = tabs.Changed.Connect(show);
  show();
  connect(this, &QTabWidget::currentChanged, this, [this, &tabs](int index) {
    tabs.Select(static_cast<PageIndex>(index));
    if (isVisible() && !tabBar()->hasFocus()) FocusFirstField();  // walking along the tabs goes on
  });
}

void WorkspaceView::FocusFirstField() {
  const auto is_field = [](const QWidget& widget) {
    const bool takes_text = qobject_cast<const QLineEdit*>(&widget) != nullptr ||
                            qobject_cast<const QComboBox*>(&widget) != nullptr;
    return takes_text && widget.isEnabled() && widget.focusPolicy() != Qt::NoFocus;
  };
  auto* page = currentWidget();
  for (auto* widget = page->nextInFocusChain(); page->isAncestorOf(widget);
       widget = widget->nextInFocusChain()) {
    if (is_field(*widget)) return widget->setFocus(Qt::TabFocusReason);
  }
}

}  // namespace desktop
