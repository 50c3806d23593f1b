#include "desktop/forms/cust_select_view.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/text_field_binding.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

/// What a column other than the name, which takes the rest, has room for.
constexpr const char* kWidest[] = {"", "Lower Kettleford", "00-000000000-00", "(000) 000-0000",
                                   "Mail returned"};
constexpr int kSmallestNameInCharacters = 24;
constexpr int kWidthInCharacters = 120;
constexpr int kCellSpace = 16;
constexpr int kChosenLines = 2;

QLabel* MakeLine(platform::Label& label, QWidget* parent) {
  auto* line = new QLabel(parent);
  line->setWordWrap(true);
  line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  Bind(label, *line);
  return line;
}

}  // namespace

CustSelectView::CustSelectView(customers::ZEMLO_CustSelect& select, int rows, QWidget* parent)
    : QWidget(parent),
      select_(select),
      find_(new QLineEdit(this)),
      list_(new QTableView(this)),
      model_(new CustomerRowsModel(select, this)) {
  SetList(rows);
  LayOut();
  Bind(select_.txtFind, *find_);
  find_->setPlaceholderText(QStringLiteral("Name, city or zip, ID, account, phone"));
  rest_.setSingleShot(true);
  rest_.setInterval(kRest);
  connect(&rest_, &QTimer::timeout, this, [this] { select_.TypingRests(); });
  typed_ = select_.txtFind.Changed.Connect([this] { rest_.start(); });
  rows_changed_ = select_.RowsChanged.Connect([this] { ShowRows(); });
  ShowRows();
}

void CustSelectView::SetList(int rows) {
  list_->setModel(model_);
  list_->setAccessibleName(QStringLiteral("Customers found"));
  list_->setItemDelegate(new MetTextDelegate(list_));
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setAlternatingRowColors(true);
  list_->setShowGrid(false);
  list_->setWordWrap(false);
  list_->setTabKeyNavigation(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  const int row_height = list_->fontMetrics().height() + 8;
  list_->verticalHeader()->setDefaultSectionSize(row_height);

  auto* heading = list_->horizontalHeader();
  heading->setHighlightSections(false);
  heading->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  heading->setSectionResizeMode(0, QHeaderView::Stretch);
  int width = list_->fontMetrics().averageCharWidth() * kSmallestNameInCharacters;
  for (int column = 1; column < model_->columnCount(); ++column) {
    const auto caption = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    auto bold = list_->font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int needed = kCellSpace + std::max(metrics.horizontalAdvance(QLatin1String(kWidest[column])),
                                             heading->fontMetrics().horizontalAdvance(caption));
    list_->setColumnWidth(column, needed);
    width += needed;
  }
  list_->setMinimumSize(SmallestOnScreen(*this, {width, (rows + 1) * row_height + kCellSpace}));

  connect(list_, &QAbstractItemView::clicked, this,
          [this](const QModelIndex& cell) { select_.UserChooses(static_cast<std::size_t>(cell.row())); });
  connect(list_, &QAbstractItemView::doubleClicked, this, [this] {
    if (chosen_for_good) chosen_for_good();
  });
  connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& cell) {
            if (!showing_ && cell.isValid()) select_.UserMovesTo(static_cast<std::size_t>(cell.row()));
          });
  connect(list_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { LookForEnd(); });
}

void CustSelectView::LayOut() {
  auto* line = new QHBoxLayout;
  line->addWidget(CaptionFor(*find_, "&Find:"));
  line->addWidget(find_, 1);
  auto* edit = MakeButton(select_.cmdEdit, this);
  auto* add = MakeButton(select_.cmdNew, this);
  line->addWidget(edit);
  line->addWidget(add);
  auto* chosen = MakeLine(select_.chosen_text, this);
  chosen->setMinimumHeight(kChosenLines *
                           chosen->fontMetrics().lineSpacing());  // nothing moves when it comes
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(line);
  layout->addWidget(MakeLine(select_.status, this));
  layout->addWidget(list_, 1);
  layout->addWidget(chosen);
  setTabOrder(find_, list_);
  setTabOrder(list_, edit);
  setTabOrder(edit, add);
  // Who is saved then is chosen: Enter is to go on with them, not to press the command that was used again.
  for (const auto* button : {edit, add})
    connect(button, &QPushButton::clicked, this, [this] { find_->setFocus(); });
}

QSize CustSelectView::sizeHint() const {
  return QWidget::sizeHint().expandedTo({fontMetrics().averageCharWidth() * kWidthInCharacters, 0});
}

void CustSelectView::Begin() {
  find_->setFocus();
}

void CustSelectView::ShowRows() {
  showing_ = true;
  model_->Refresh();
  const auto current = select_.current_row();
  if (current) {
    const auto row = static_cast<int>(*current);
    list_->setCurrentIndex(model_->index(row, 0));
    find_->setAccessibleDescription(model_->SpokenRow(row));
  } else {
    list_->selectionModel()->clear();
    find_->setAccessibleDescription({});
  }
  showing_ = false;
  LookForEnd();
}

// The bar knows the length of a new list once it is laid out.
void CustSelectView::LookForEnd() {
  const auto* bar = list_->verticalScrollBar();
  const bool fits = model_->rowCount() <= RowsInSight();
  const bool at_end = bar->maximum() > 0 && bar->value() == bar->maximum();
  if (list_->isVisible() && (fits || at_end)) select_.EndInSight();
}

int CustSelectView::RowsInSight() const {
  return std::max(1, list_->viewport()->height() / list_->verticalHeader()->defaultSectionSize());
}

bool CustSelectView::TakesKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      select_.UserMovesBy(event.key() == Qt::Key_Up ? -1 : 1);
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      select_.UserMovesBy(event.key() == Qt::Key_PageUp ? -RowsInSight() : RowsInSight());
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return select_.UserPressesEnter();
    case Qt::Key_Escape:
      return select_.UserGoesBack();
    default:
      return false;
  }
}

void CustSelectView::keyPressEvent(QKeyEvent* event) {
  if (!HasKeyboard() || !TakesKey(*event)) QWidget::keyPressEvent(event);
}

}  // namespace desktop
