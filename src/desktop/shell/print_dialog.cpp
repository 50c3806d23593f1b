#include "desktop/shell/print_dialog.h"

#include <array>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

using platform::PrintChoice;

constexpr int kMostCopies = 99;
constexpr int kRemarkLines = 2;
constexpr int kNarrowest = 320;  // the title can be read

/// In the order of PrintChoice::Sides.
constexpr auto kSides = std::to_array({"As the printer is set", "One side", "Both sides"});

}  // namespace

PrintDialog::PrintDialog(const platform::PrintQuestion& question, QWidget* parent)
    : QDialog(parent),
      question_(question),
      printer_(new QComboBox(this)),
      copies_(new QSpinBox(this)),
      sides_(new QComboBox(this)),
      pages_(new QLineEdit(this)),
      remark_(new QLabel(this)),
      buttons_(new QDialogButtonBox(this)) {
  setWindowTitle(question.letters == 1 ? QStringLiteral("Print Letter")
                                       : QStringLiteral("Print %1 Letters").arg(question.letters));
  for (const auto& printer : question.printers) printer_->addItem(ToQt(printer.name));
  for (const auto* sides : kSides) sides_->addItem(QLatin1String(sides));
  copies_->setRange(1, kMostCopies);
  pages_->setObjectName(QStringLiteral("pages"));
  pages_->setPlaceholderText(QStringLiteral("all, or 1-2, 4"));
  LayOut();
  Propose(question.proposed);
  connect(printer_, &QComboBox::currentIndexChanged, this, &PrintDialog::ShowWhatGoes);
  connect(pages_, &QLineEdit::textChanged, this, &PrintDialog::ShowWhatGoes);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ShowWhatGoes();
}

void PrintDialog::LayOut() {
  setMinimumWidth(kNarrowest);
  auto* layout = new QFormLayout(this);
  layout->addRow(QStringLiteral("&Printer:"), printer_);
  layout->addRow(QStringLiteral("&Copies:"), copies_);
  layout->addRow(QStringLiteral("&Sides:"), sides_);
  if (question_.letters == 1) {
    layout->addRow(QStringLiteral("P&ages:"), pages_);
  } else {
    pages_->hide();
  }
  remark_->setWordWrap(true);
  remark_->setMinimumHeight(kRemarkLines * fontMetrics().lineSpacing());
  remark_->setAccessibleName(QStringLiteral("Remark"));
  layout->addRow(remark_);
  buttons_->addButton(QStringLiteral("P&rint"), QDialogButtonBox::AcceptRole)->setDefault(true);
  buttons_->addButton(QDialogButtonBox::Cancel);
  layout->addRow(buttons_);
}

void PrintDialog::Propose(const PrintChoice& proposed) {
  printer_->setCurrentIndex(std::max(0, printer_->findText(ToQt(proposed.printer))));
  copies_->setValue(proposed.copies);
  sides_->setCurrentIndex(static_cast<int>(proposed.sides));
}

void PrintDialog::ShowWhatGoes() {
  const auto index = static_cast<std::size_t>(std::max(0, printer_->currentIndex()));
  const bool takes_options = index < question_.printers.size() && question_.printers[index].takes_options;
  for (auto* option : std::initializer_list<QWidget*>{copies_, sides_, pages_}) {
    option->setEnabled(takes_options);
  }
  const bool is_right = choice().has_value();
  buttons_->buttons().front()->setEnabled(is_right);
  if (!takes_options) {
    remark_->setText(QStringLiteral("\"%1\" takes each letter whole, once.").arg(printer_->currentText()));
  } else {
    remark_->setText(is_right ? QString() : QStringLiteral("Pages are numbers from 1 up, such as 1-2, 4."));
  }
}

std::optional<PrintChoice> PrintDialog::choice() const {
  PrintChoice choice{.printer = FromQt(printer_->currentText())};
  if (!copies_->isEnabled()) return choice;
  const auto pages = platform::PageRanges(FromQt(pages_->text()));
  if (!pages) return std::nullopt;
  choice.copies = copies_->value();
  choice.sides = static_cast<PrintChoice::Sides>(sides_->currentIndex());
  choice.pages = *pages;
  return choice;
}

}  // namespace desktop
