#include "desktop/shell/notice_bar.h"

#include <utility>

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace desktop {

NoticeBar::NoticeBar(const QString& text, std::function<void()> dismissed, QWidget* parent) : QFrame(parent) {
  setFrameShape(QFrame::StyledPanel);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(8, 2, 2, 2);
  auto* label = new QLabel(text, this);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may name a file
  auto* dismiss = new QToolButton(this);
  dismiss->setText(QStringLiteral("Dismiss"));
  dismiss->setAutoRaise(true);
  dismiss->setFocusPolicy(Qt::TabFocus);
  layout->addWidget(label, 1);
  layout->addWidget(dismiss);
  connect(dismiss, &QToolButton::clicked, this, [this, told = std::move(dismissed)] {
    hide();
    if (told) told();
  });
}

}  // namespace desktop
