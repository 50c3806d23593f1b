#include "desktop/forms/letter_information_view.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/forms/letter_pictures.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

using composition::frmBatch;

constexpr QSize kSmallestTree(440, 280);
constexpr int kFrameWidth = 420;
constexpr int kMostProblemLines = 7;

}  // namespace

LetterInformationView::LetterInformationView(frmBatch& form, QWidget* parent)
    : QWidget(parent), form_(form), fields_(new TreeView(this)) {
  fields_->setMinimumSize(SmallestOnScreen(*this, kSmallestTree));
  Bind(form_.tvw, *fields_, QStringLiteral("Fields of the letter"), LetterPicture);
  LayOut();
}

void LetterInformationView::LayOut() {
  auto* middle = new QHBoxLayout;
  middle->addWidget(fields_, 1);
  middle->addWidget(BookmarkInformation());
  auto* ok = MakeButton(form_.cmdOk, this);
  ok->setDefault(true);
  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(ok);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* verdict = new QLabel(this);
  verdict->setWordWrap(true);
  auto bold = verdict->font();
  bold.setBold(true);
  verdict->setFont(bold);
  Bind(form_.verdict, *verdict);
  verdict->setVisible(!form_.verdict.caption().empty());
  layout->addWidget(verdict);
  layout->addLayout(Labels(frmBatch::kHeader));
  layout->addLayout(middle, 1);
  if (!form_.problems.caption().empty()) layout->addWidget(Problems());
  layout->addLayout(ends);
}

QWidget* LetterInformationView::Problems() {
  auto* problems = new QLabel;
  problems->setWordWrap(true);
  problems->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  Bind(form_.problems, *problems, QStringLiteral("What is wrong:"));
  auto* scrolled = new QScrollArea(this);
  scrolled->setWidget(problems);
  scrolled->setWidgetResizable(true);
  scrolled->setFocusPolicy(Qt::StrongFocus);
  scrolled->setAccessibleName(QStringLiteral("What is wrong"));
  const int line = fontMetrics().lineSpacing();
  const auto lines = 1 + static_cast<int>(std::ranges::count(form_.problems.caption(), '\n'));
  scrolled->setFixedHeight((std::min(lines, kMostProblemLines) + 1) * line);
  return scrolled;
}

template <typename Lines>
QGridLayout* LetterInformationView::Labels(const Lines& lines) {
  auto* layout = new QGridLayout;
  layout->setColumnStretch(1, 1);
  int row = 0;
  for (const auto& [caption, label] : lines) {
    auto& shown = form_.*label;
    if (shown.visible()) AddShown(*layout, row++, 0, caption, shown);
  }
  return layout;
}

// The value of a field that holds others is as long as all of them together: it scrolls.
QGroupBox* LetterInformationView::BookmarkInformation() {
  auto* labels = new QWidget;
  auto* rows = new QVBoxLayout(labels);
  rows->addLayout(Labels(frmBatch::kBookmarkInformation));
  rows->addStretch(1);
  auto* scrolled = new QScrollArea;
  scrolled->setWidget(labels);
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setFocusPolicy(Qt::StrongFocus);
  scrolled->setAccessibleName(QStringLiteral("Bookmark information"));

  auto* frame = new QGroupBox(this);
  frame->setFixedWidth(kFrameWidth);
  (new QVBoxLayout(frame))->addWidget(scrolled);
  Bind(form_.bookmark_information, *frame);
  return frame;
}

void LetterInformationView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  fields_->setFocus();
}

}  // namespace desktop
