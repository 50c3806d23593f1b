#include "desktop/shell/host_window.h"

#include <array>

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace desktop {
namespace {

struct Button {
  int index;
  const char* caption;
  const char* shortcut;
  const char* tip;
};

/// The host's toolbar; a gap stands before the buttons listed in kGapsBefore. The numbers are the ones
/// documents know the buttons by.
constexpr auto kButtons = std::to_array<Button>({
    {1, "Generate", "", "Go to the letters to generate"},
    {2, "Search", "", "Go to the letters already produced"},
    {3, "Batches", "", "Go to the nightly batch files"},
    {7, "New", "Ctrl+N", "Start a new document"},
    {8, "Open", "Ctrl+O", "Open a document"},
    {9, "Save", "Ctrl+S", "Save the document"},
    {12, "Print", "Ctrl+P", "Print the document"},
    {14, "Delete", "", "Delete the document"},
    {15, "Help", "F1", "How to work this window"},
});
constexpr auto kGapsBefore = std::to_array({7, 15});
constexpr int kWorkBarInCharacters = 14;

}  // namespace

HostWindow::HostWindow(const QString& caption)
    : status_(new QLabel(this)), reason_(new QLabel(this)), work_(new QWidget(this)) {
  setWindowTitle(caption);
  AddToolbar();
  auto* middle = new QWidget(this);
  content_ = new QVBoxLayout(middle);
  content_->setContentsMargins(6, 6, 6, 0);
  setCentralWidget(middle);
  status_->setAccessibleName(QStringLiteral("Status"));
  status_->setTextFormat(Qt::PlainText);
  status_->setContentsMargins(8, 2, 8, 2);
  statusBar()->addWidget(status_);
  reason_->setAccessibleName(QStringLiteral("Reason"));
  reason_->setTextFormat(Qt::PlainText);
  reason_->setTextInteractionFlags(Qt::TextSelectableByMouse);           // it may name a file
  reason_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // however long it is
  statusBar()->addWidget(reason_, 1);
  AddWork();
}

void HostWindow::AddWork() {
  auto* bar = new QProgressBar(work_);
  bar->setRange(0, 0);  // nobody knows how long it takes
  bar->setTextVisible(false);
  bar->setFixedWidth(fontMetrics().averageCharWidth() * kWorkBarInCharacters);
  bar->setFixedHeight(fontMetrics().height());
  bar->setAccessibleName(QStringLiteral("Work under way"));
  auto* layout = new QHBoxLayout(work_);
  layout->setContentsMargins(8, 0, 8, 0);
  layout->addWidget(new QLabel(QStringLiteral("The letter is being laid out"), work_));
  layout->addWidget(bar);
  work_->hide();
  statusBar()->addPermanentWidget(work_);
}

void HostWindow::ShowWork(bool is_under_way) {
  work_->setVisible(is_under_way);
  is_under_way ? setCursor(Qt::BusyCursor) : unsetCursor();
}

void HostWindow::AddToolbar() {
  auto* toolbar = addToolBar(QStringLiteral("Host"));
  toolbar->setMovable(false);
  toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
  toolbar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  for (const auto& button : kButtons) {
    for (const int gap : kGapsBefore) {
      if (gap == button.index) toolbar->addSeparator();
    }
    auto* action = toolbar->addAction(QLatin1String(button.caption));
    action->setShortcut(QKeySequence(QLatin1String(button.shortcut)));
    action->setToolTip(QLatin1String(button.tip));
    connect(action, &QAction::triggered, this, [this, index = button.index] {
      if (toolbar_pressed) toolbar_pressed(index);
    });
    toolbar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    buttons_[button.index] = action;
  }
}

void HostWindow::ShowDocument(QWidget* document) {
  content_->addWidget(document, 1);
}

void HostWindow::DropNotice() {
  if (notice_ != nullptr && notice_stays_ == Stays::kNo) notice_->hide();
}

void HostWindow::ShowNotice(const QString& text, Stays stays) {
  delete notice_;
  notice_stays_ = stays;
  const auto dismissed = [this] {
    if (notice_dismissed) notice_dismissed();
  };
  notice_ = new NoticeBar(text, dismissed, this);
  content_->insertWidget(0, notice_);
}

void HostWindow::ShowStatus(const QString& text) {
  status_->setText(text);
  ShowReason({});
  status_->repaint();  // what follows may keep the window from painting
}

void HostWindow::ShowReason(const QString& text) {
  reason_->setText(text);
  reason_->setToolTip(text);
}

QAction* HostWindow::ToolbarButton(int index) const {
  const auto found = buttons_.find(index);
  return found == buttons_.end() ? nullptr : found->second;
}

void HostWindow::EnableToolbarButton(int index, bool enabled) {
  if (auto* button = ToolbarButton(index)) button->setEnabled(enabled);
}

void HostWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(!may_close || may_close());
}

}  // namespace desktop
