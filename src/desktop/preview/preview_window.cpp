#include "desktop/preview/preview_window.h"

#include <utility>

#include <QAction>
#include <QApplication>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPdfPageNavigator>
#include <QToolBar>
#include <QVBoxLayout>

#include "desktop/look/qt_text.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

constexpr qreal kZoomStep = 1.25;
constexpr QSize kUsualSize(900, 860);

}  // namespace

PreviewDialog::PreviewDialog(platform::PreviewContent content, QtEventQueue& events, BusyGuard& guard,
                             QWidget* parent)
    : QDialog(parent, Qt::Window),
      content_(std::move(content)),
      events_(events),
      guard_(guard),
      layout_(new QVBoxLayout(this)),
      pages_(new PreviewPages(this)),
      page_number_(new QLabel(this)),
      finds_(new QLabel(this)),
      search_(new QLineEdit(this)) {
  setWindowTitle(ToQt(content_.title));
  setWindowModality(Qt::ApplicationModal);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(0);
  layout_->addWidget(MakeToolbar());
  AddWarning();
  layout_->addWidget(pages_, 1);
  FitToScreen(*this, kUsualSize);

  if (!pages_->Load(ToQt(content_.pdf.string()))) {
    page_number_->setText(QStringLiteral("The pages cannot be read. Close the preview and open it again."));
  } else {
    ShowPageNumber();
  }
  connect(pages_->pageNavigator(), &QPdfPageNavigator::currentPageChanged, this,
          [this] { ShowPageNumber(); });
  pages_->finds_changed = [this] { ShowFinds(); };
  pages_->setFocus();
  idle_ = guard_.Idle.Connect([this] {
    // The reply is still being handled.
    QMetaObject::invokeMethod(
        this, [this] { RunWaiting(); }, Qt::QueuedConnection);
  });
}

PreviewDialog::~PreviewDialog() {
  // The view turns its pages once more when it loses its document.
  pages_->finds_changed = nullptr;
  pages_->pageNavigator()->disconnect(this);
}

QAction* PreviewDialog::Add(QToolBar& bar, const char* caption, const QList<QKeySequence>& keys,
                            std::function<void()> work) {
  auto* action = bar.addAction(QLatin1String(caption));
  action->setShortcuts(keys);
  connect(action, &QAction::triggered, this, std::move(work));
  bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  return action;
}

QToolBar* PreviewDialog::MakeToolbar() {
  auto* bar = new QToolBar(this);
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  Add(*bar, "&Print", {QKeySequence::Print}, [this] { RunWhenIdle(content_.print); });
  Add(*bar, "&Save", {QKeySequence::Save}, [this] { RunWhenIdle(content_.save); });
  bar->addSeparator();
  Add(*bar, "Zoom &In", {QKeySequence::ZoomIn, QKeySequence(QStringLiteral("Ctrl+="))},
      [this] { pages_->ZoomBy(kZoomStep); });
  Add(*bar, "Zoom &Out", {QKeySequence::ZoomOut}, [this] { pages_->ZoomBy(1 / kZoomStep); });
  Add(*bar, "Fit &Width", {QKeySequence(QStringLiteral("Ctrl+0"))}, [this] { pages_->FitWidth(); });
  bar->addSeparator();
  AddSearch(*bar);
  bar->addWidget(page_number_);
  bar->addSeparator();
  Add(*bar, "&Close", {}, [this] { reject(); });
  return bar;
}

void PreviewDialog::AddSearch(QToolBar& bar) {
  auto* label = new QLabel(QStringLiteral("&Find:"), this);
  label->setBuddy(search_);
  search_->setAccessibleName(QStringLiteral("Find"));
  search_->setClearButtonEnabled(true);
  search_->setMinimumWidth(120);
  bar.addWidget(label);
  bar.addWidget(search_);
  connect(search_, &QLineEdit::textChanged, pages_, [this](const QString& text) { pages_->Search(text); });
  connect(search_, &QLineEdit::returnPressed, pages_, [this] { pages_->GoToFind(+1); });
  Add(bar, "P&revious", {QKeySequence::FindPrevious}, [this] { pages_->GoToFind(-1); });
  Add(bar, "&Next", {QKeySequence::FindNext}, [this] { pages_->GoToFind(+1); });
  bar.addWidget(finds_);
  auto* spacer = new QWidget(this);
  spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar.addWidget(spacer);

  auto* find = new QAction(this);
  find->setShortcut(QKeySequence::Find);
  connect(find, &QAction::triggered, this, [this] {
    search_->setFocus();
    search_->selectAll();
  });
  addAction(find);
}

void PreviewDialog::RunWhenIdle(const std::function<void()>& work) {
  if (!guard_.busy()) return RunHeld(work);
  if (waiting_) return;
  waiting_ = work;
  page_number_->setText(QStringLiteral(" Waiting for the server ... "));
}

void PreviewDialog::RunWaiting() {
  if (!waiting_ || guard_.busy() || !isVisible()) return;
  ShowPageNumber();
  RunHeld(std::exchange(waiting_, nullptr));
}

void PreviewDialog::AddWarning() {
  if (content_.not_filled.empty()) return;
  QStringList names;
  for (const auto& name : content_.not_filled) names += ToQt(name);
  auto* warning =
      new QLabel(QStringLiteral("Nothing fills these places of the letter: %1. Print and Save ask "
                                "before it goes out with placeholders.")
                     .arg(names.join(QStringLiteral(", "))),
                 this);
  warning->setAccessibleName(QStringLiteral("Warning"));
  warning->setTextFormat(Qt::PlainText);
  warning->setTextInteractionFlags(Qt::TextSelectableByMouse);
  warning->setWordWrap(true);
  warning->setFrameShape(QFrame::StyledPanel);
  warning->setMargin(6);
  auto font = warning->font();
  font.setBold(true);
  warning->setFont(font);
  layout_->addWidget(warning);
}

void PreviewDialog::ShowNotice(const QString& text) {
  delete notice_;
  notice_ = new NoticeBar(text, nullptr, this);
  layout_->insertWidget(layout_->indexOf(pages_), notice_);
}

void PreviewDialog::RunHeld(const std::function<void()>& work) {
  const auto own_copy = work;
  delete notice_;  // of the try before
  const QtEventQueue::Hold hold(events_);
  if (own_copy) own_copy();
}

void PreviewDialog::ShowPageNumber() {
  const int page = pages_->pageNavigator()->currentPage() + 1;
  page_number_->setText(QStringLiteral(" Page %1 of %2 ").arg(page).arg(pages_->document()->pageCount()));
}

void PreviewDialog::ShowFinds() {
  QString text;
  if (!search_->text().isEmpty()) {
    text = pages_->finds() == 0
               ? QStringLiteral(" Not found ")
               : QStringLiteral(" %1 of %2 ").arg(pages_->current_find() + 1).arg(pages_->finds());
  }
  finds_->setText(text);
}

void PreviewDialog::done(int result) {
  if (!isVisible()) return;
  QDialog::done(result);
  if (closed) closed();
}

void PreviewDialog::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  if (event->spontaneous()) return;
  auto* const modal = QApplication::activeModalWidget();
  auto* const front = modal != nullptr ? modal : parentWidget();
  if (front != nullptr) front->activateWindow();  // not every host does
}

}  // namespace desktop
