#include "desktop/binders/pick_list_field.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include "desktop/binders/binding.h"
#include "desktop/binders/pick_list_accessible.h"
#include "desktop/binders/typed_key.h"
#include "desktop/look/qt_text.h"
#include "platform/search_text.h"

namespace desktop {
namespace {

constexpr int kShownRows = 12;
constexpr int kMinimumCharacters = 18;
constexpr char32_t kBackspace = 8;

QColor FromColorRef(std::uint32_t color) {
  return {int(color & 0xff), int(color >> 8 & 0xff), int(color >> 16 & 0xff)};
}

bool MovesInList(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

/// As a click does. (Only events of the window system give the focus by themselves.)
void FocusByClick(QWidget* widget) {
  while (widget != nullptr && (!widget->isEnabled() || !(widget->focusPolicy() & Qt::ClickFocus))) {
    widget = widget->isWindow() ? nullptr : widget->parentWidget();
  }
  if (widget != nullptr) widget->setFocus(Qt::MouseFocusReason);
}

}  // namespace

PickListField::PickListField(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  // After the line edit: a field's place in the tab order is that of its first child with it as proxy.
  view_ = new QListView(this);
  setCompleter(nullptr);
  setInsertPolicy(NoInsert);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kMinimumCharacters);

  view_->setWindowFlag(Qt::Popup);
  view_->setFocusPolicy(Qt::NoFocus);
  view_->setFocusProxy(this);
  view_->setModel(&model_);
  view_->setUniformItemSizes(true);
  view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view_->setMouseTracking(true);
  view_->hide();
  view_->installEventFilter(this);
  view_->viewport()->installEventFilter(this);
  connect(view_, &QListView::clicked, this, [this](const QModelIndex& index) { Pick(index); });
}

PickListField::~PickListField() {
  list_ = nullptr;  // what closes while the field goes is no leaving
}

void PickListField::SetControl(platform::PickList& list) {
  list_ = &list;
  InstallPickListAccessible();
  lineEdit()->setAccessibleName(accessibleName());
  connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
    list_->UserEditsText(FromQt(text));
    ShowContent();  // the list may have cut it
    OfferMatches();
  });
  content_changed_ = list.ContentChanged.Connect([this] { ShowContent(); });
  look_changed_ = list.LookChanged.Connect([this] { ShowColors(); });
  ShowContent();
  ShowColors();
}

void PickListField::TakeRows() {
  if (model_.rows() != list_->rows()) model_.SetRows(list_->rows(), list_->DescriptionColumn());
}

void PickListField::ShowContent() {
  const auto text = ToQt(list_->shown_text());
  if (lineEdit()->text() != text) {
    lineEdit()->setText(text);
    lineEdit()->setCursorPosition(0);  // a long description is read from its start
  }
  if (IsOpen()) TakeRows();
}

void PickListField::ShowColors() {
  // The host's own colours keep the text readable in a dark palette; black on them is the host's own text.
  const bool own_background = list_->back_color() != platform::PickList::kInputBackground;
  QPalette colors;
  if (own_background) colors.setColor(QPalette::Base, FromColorRef(list_->back_color()));
  if (own_background || list_->fore_color() != platform::PickList::kBlack) {
    colors.setColor(QPalette::Text, FromColorRef(list_->fore_color()));
  }
  if (colors != palette()) setPalette(colors);
}

void PickListField::showPopup() {
  if (list_ == nullptr || IsOpen()) return;
  list_->UserOpens();
  model_.SetRows(list_->rows(), list_->DescriptionColumn());  // all of them, whatever was typed before
  PlacePopup();
  view_->show();
  MoveToMatch();
}

void PickListField::hidePopup() {
  view_->hide();
}

void PickListField::PlacePopup() {
  const int rows = std::clamp(model_.rowCount(), 1, kShownRows);
  const int frame = 2 * view_->frameWidth();
  const int height = rows * std::max(view_->sizeHintForRow(0), fontMetrics().height()) + frame;
  const auto screen = this->screen()->availableGeometry();
  auto corner = mapToGlobal(QPoint(0, this->height()));
  if (corner.y() + height > screen.bottom()) corner = mapToGlobal(QPoint(0, -height));
  const int wide = std::max(width(), fontMetrics().averageCharWidth() * 36);
  corner.setX(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - wide)));
  view_->setGeometry(QRect(corner, QSize(wide, height)));
}

void PickListField::MoveToMatch() {
  if (!IsOpen()) return;
  const int row = model_.FirstMatch(list_->shown_text());
  view_->setCurrentIndex(row < 0 ? QModelIndex() : model_.index(row));
  if (row >= 0) view_->scrollTo(model_.index(row), QAbstractItemView::PositionAtTop);
}

void PickListField::OfferMatches() {
  const auto matches = list_->RowsWith(list_->shown_text());
  const bool is_typed = !platform::SearchWords(list_->shown_text()).empty();
  if (matches.empty() || (!is_typed && !IsOpen())) return hidePopup();
  TakeRows();
  model_.Offer(matches);
  PlacePopup();
  view_->show();
  MoveToMatch();
}

void PickListField::Pick(const QModelIndex& index) {
  if (!index.isValid()) return;
  const auto row = model_.RowOf(index);
  hidePopup();
  list_->UserPicks(row);
  lineEdit()->selectAll();
}

void PickListField::Leave() {
  if (list_ != nullptr) list_->UserLeaves();
}

bool PickListField::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_ || watched == view_->viewport()) return PopupEvent(event);
  return QComboBox::eventFilter(watched, event);
}

bool PickListField::PopupEvent(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (MovesInList(key->key()) && !key->modifiers().testFlag(Qt::AltModifier)) return false;  // it moves
    if (!ListTakesKey(key)) TypeKey(key);
    return true;
  }
  if (event->type() == QEvent::MouseMove) {
    const auto place = static_cast<QMouseEvent*>(event)->position().toPoint();
    view_->setCurrentIndex(view_->indexAt(place));
  }
  if (event->type() == QEvent::MouseButtonPress) {
    auto* press = static_cast<QMouseEvent*>(event);
    const bool outside = !view_->rect().contains(view_->mapFromGlobal(press->globalPosition().toPoint()));
    if (outside) PressOutside(*press);
    return outside;
  }
  return false;
}

// Typing has opened the list: who clicks on means what lies there.
void PickListField::PressOutside(const QMouseEvent& press) {
  hidePopup();
  const auto place = press.globalPosition();
  auto* meant = QApplication::widgetAt(place.toPoint());
  if (meant == nullptr || meant->window() != window() || meant == this || isAncestorOf(meant)) return;
  FocusByClick(meant);
  // The release goes to the list's own window, which is closed by then.
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto held = type == QEvent::MouseButtonPress ? press.buttons() : Qt::MouseButtons();
    QApplication::postEvent(meant, new QMouseEvent(type, meant->mapFromGlobal(place), place, press.button(),
                                                   held, press.modifiers()));
  }
}

bool PickListField::ListTakesKey(QKeyEvent* event) {
  const int key = event->key();
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    Pick(view_->currentIndex());
  } else if (key == Qt::Key_Escape || key == Qt::Key_F4 || (alt && MovesInList(key))) {
    hidePopup();
  } else if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
    hidePopup();
    QApplication::sendEvent(this, event);
  } else if (MovesInList(key)) {
    QApplication::sendEvent(view_, event);
  } else {
    return false;
  }
  return true;
}

bool PickListField::TakesKey(QKeyEvent* event) {
  const int key = event->key();
  if (MovesInList(key) || key == Qt::Key_F4) {
    showPopup();
    return true;
  }
  if (key == Qt::Key_Return || key == Qt::Key_Enter) Leave();  // before the default button acts on the value
  const auto typed = key == Qt::Key_Backspace ? std::optional(kBackspace) : TypedCharacter(*event);
  const auto selected = static_cast<std::size_t>(lineEdit()->selectedText().toUcs4().size());
  return typed && !list_->UserTypes(*typed, selected);
}

void PickListField::keyPressEvent(QKeyEvent* event) {
  if (!IsOpen() || !ListTakesKey(event)) TypeKey(event);
}

void PickListField::TypeKey(QKeyEvent* event) {
  if (list_ != nullptr && !TakesKey(event)) lineEdit()->event(event);
}

void PickListField::wheelEvent(QWheelEvent* event) {
  event->ignore();  // scrolls the page, never the value
}

// Left before the keyboard looks for its next place: what the value enables is a place, too.
bool PickListField::focusNextPrevChild(bool next) {
  hidePopup();
  Leave();
  return QComboBox::focusNextPrevChild(next);
}

void PickListField::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  switch (event->reason()) {
    case Qt::PopupFocusReason:
    case Qt::ActiveWindowFocusReason:
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
      return;  // still there, or left already
    default:
      hidePopup();
      Leave();
  }
}

void Bind(platform::PickList& list, PickListField& field) {
  new Binding(list, field);
  field.SetControl(list);
}

}  // namespace desktop
