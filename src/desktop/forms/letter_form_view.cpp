#include "desktop/forms/letter_form_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/binders/field_layout.h"
#include "desktop/binders/text_box_binding.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

constexpr int kRowsOfValues = 6;
constexpr int kRowsOfParagraphs = 5;
constexpr int kFewestRows = 3;
constexpr int kWidthInCharacters = 110;
constexpr int kHeightInLines = 34;

/// High enough for its heading and some rows; it grows with the window.
void KeepRowsInSight(EntryGridView& grid, int rows) {
  grid.setMinimumHeight((rows + 1) * grid.verticalHeader()->defaultSectionSize());
}

}  // namespace

LetterFormView::LetterFormView(composition::frmLetter& form, QWidget* parent)
    : QWidget(parent),
      form_(form),
      offer_(new QLabel(this)),
      values_(new EntryGridView(this)),
      paragraphs_(new EntryGridView(this)),
      text_(new QPlainTextEdit(this)),
      paragraph_box_(new QGroupBox(QStringLiteral("Paragraph Bookmark"), this)),
      preview_(MakeButton(form.cmdOK, this)),
      cancel_(MakeButton(form.cmdCancel, this)) {
  Bind(form_.sdgUserBookmark, *values_, QStringLiteral("User Bookmark"));
  Bind(form_.sdgGrid, *paragraphs_, QStringLiteral("Paragraph Bookmark"));
  Bind(form_.txtParagraph, *text_);
  text_->setAccessibleName(QStringLiteral("Wording of the paragraph"));
  LayOut();
  preview_->setDefault(true);
  paragraphs_changed_ = form_.sdgGrid.LookChanged.Connect([this] { ShowParagraphs(); });
  confirmed_ = form_.cmdOK.Click.Connect([this] { MoveKeyboardAfterConfirming(); });
}

void LetterFormView::LayOut() {
  auto* value_box = new QGroupBox(QStringLiteral("User Bookmark"), this);
  auto* values = new QVBoxLayout(value_box);
  values->addWidget(values_);
  KeepRowsInSight(*values_, kFewestRows);

  auto* paragraphs = new QHBoxLayout(paragraph_box_);
  paragraphs->addWidget(paragraphs_, 1);
  paragraphs->addWidget(text_, 1);
  KeepRowsInSight(*paragraphs_, kFewestRows);
  ShowParagraphs();

  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(preview_);
  ends->addWidget(cancel_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  offer_->setTextFormat(Qt::PlainText);
  ShowOffer();
  layout->addWidget(offer_);
  layout->addWidget(value_box, kRowsOfValues);
  layout->addWidget(paragraph_box_, kRowsOfParagraphs);
  layout->addLayout(ends);
  setTabOrder(values_, paragraphs_);
  setTabOrder(paragraphs_, text_);
  setTabOrder(text_, preview_);
  setTabOrder(preview_, cancel_);
}

void LetterFormView::ShowParagraphs() {
  paragraph_box_->setVisible(form_.sdgGrid.visible());
}

void LetterFormView::ShowOffer() {
  offer_->setText(ToQt(form_.offered_notice.caption()));
  offer_->setVisible(!offer_->text().isEmpty());
}

QSize LetterFormView::sizeHint() const {
  return {fontMetrics().averageCharWidth() * kWidthInCharacters, fontMetrics().height() * kHeightInLines};
}

void LetterFormView::MoveKeyboardAfterConfirming() {
  if (!form_.shown() || form_.missing().empty()) return;
  auto& grid = form_.missing().front().is_paragraph ? *paragraphs_ : *values_;
  grid.ShowCurrentRow();
  grid.setFocus();
}

void LetterFormView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    cancel_->click();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void LetterFormView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  const bool has_values = values_->model()->rowCount() > 0;
  (has_values || !paragraphs_->isVisibleTo(this) ? values_ : paragraphs_)->setFocus();
}

}  // namespace desktop
