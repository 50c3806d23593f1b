#include "desktop/forms/print_summary_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/grid_view.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

constexpr QSize kSmallestList(640, 220);
constexpr int kReasonLines = 3;

}  // namespace

PrintSummaryView::PrintSummaryView(tracking::frmPrintSummary& form, QWidget* parent) : QWidget(parent) {
  auto* outcome = new QLabel(this);
  Bind(form.outcome, *outcome);
  auto* letters = new GridView(this);
  Bind(form.letters, *letters, QStringLiteral("Letters that failed"));
  letters->setMinimumSize(SmallestOnScreen(*this, kSmallestList));
  letters->horizontalHeader()->setStretchLastSection(true);
  auto* reason = new QLabel(this);
  reason->setWordWrap(true);
  reason->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  reason->setMinimumHeight(kReasonLines * fontMetrics().lineSpacing());
  Bind(form.reason, *reason, QStringLiteral("What went wrong"));
  auto* close = MakeButton(form.close, this);
  close->setDefault(true);

  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(MakeButton(form.again, this));
  ends->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(outcome);
  layout->addWidget(letters, 1);
  layout->addWidget(reason);
  layout->addLayout(ends);
}

}  // namespace desktop
