#include "desktop/binders/tree_view.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>

#include "desktop/binders/binding.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

using platform::Tree;

constexpr int kTwipsAnInch = 1440;
constexpr int kRoomBeside = 48;            // the window's margins and frame
constexpr double kReadableContrast = 4.5;  // what the accessibility guidelines ask of a text

Tree::Node& NodeOf(const QTreeWidgetItem& item) {
  return *static_cast<Tree::Node*>(item.data(0, Qt::UserRole).value<void*>());
}

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

/// The colour, lighter or darker by as much as it takes to be read on the background.
QColor ReadableOn(QColor colour, const QColor& background) {
  const int step = Luminance(background) < 0.18 ? 4 : -4;
  while (Contrast(colour, background) < kReadableContrast) {
    const int lightness = colour.lightness() + step;
    if (lightness < 0 || lightness > 255) break;
    colour.setHsl(colour.hslHue(), colour.hslSaturation(), lightness);
  }
  return colour;
}

QColor FromBlueGreenRed(platform::Colour colour) {
  const auto part = [colour](int shift) { return static_cast<int>(colour >> shift & 0xFF); };
  return {part(0), part(8), part(16)};
}

}  // namespace

TreeView::TreeView(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);  // a deep node is scrolled to, not cut
  connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { TellClick(); });
  connect(this, &QTreeWidget::itemExpanded, this,
          [this](QTreeWidgetItem* item) { tree_->UserExpands(NodeOf(*item), true); });
  connect(this, &QTreeWidget::itemCollapsed, this,
          [this](QTreeWidgetItem* item) { tree_->UserExpands(NodeOf(*item), false); });
}

void TreeView::SetTree(Tree& tree, const QString& name, Pictures pictures) {
  tree_ = &tree;
  pictures_ = std::move(pictures);
  setAccessibleName(name);
  if (tree.width) {
    const int room = screen()->availableSize().width() - kRoomBeside;
    setMinimumWidth(std::min(*tree.width * logicalDpiX() / kTwipsAnInch, room));
  }
  content_changed_ = tree.ContentChanged.Connect([this] { ShowNodes(); });
  ShowNodes();
}

void TreeView::ShowNodes() {
  clear();
  QList<QTreeWidgetItem*> top;
  for (auto* node : tree_->top_level()) top.push_back(ItemsOf(*node));
  addTopLevelItems(top);
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    (*item)->setExpanded(NodeOf(**item).expanded);
  }
}

QTreeWidgetItem* TreeView::ItemsOf(Tree::Node& top) {
  auto* const top_item = new QTreeWidgetItem;
  std::vector<std::pair<Tree::Node*, QTreeWidgetItem*>> open = {{&top, top_item}};
  while (!open.empty()) {
    const auto [node, item] = open.back();
    open.pop_back();
    item->setData(0, Qt::UserRole, QVariant::fromValue<void*>(node));
    item->setText(0, ToQt(node->text));
    Dress(*item);
    for (auto* child : node->children) open.emplace_back(child, new QTreeWidgetItem(item));
  }
  return top_item;
}

void TreeView::Dress(QTreeWidgetItem& item) const {
  const auto& node = NodeOf(item);
  item.setIcon(0, pictures_(node.image));
  const auto meaning = ToQt(tree_->MeaningOf(node.image));
  item.setData(0, Qt::AccessibleTextRole, meaning.isEmpty() ? item.text(0) : item.text(0) + ", " + meaning);
  if (node.colour == platform::kBlack) return;  // the colour of text, whatever the palette makes it
  item.setForeground(0, ReadableOn(FromBlueGreenRed(node.colour), palette().color(QPalette::Base)));
}

void TreeView::DressAll() {
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) Dress(**item);
}

void TreeView::TellClick() {
  const auto selected = selectedItems();
  if (selected.isEmpty()) return;
  told_ = true;
  tree_->UserClicks(NodeOf(*selected.front()));
}

void TreeView::mousePressEvent(QMouseEvent* event) {
  told_ = false;
  QTreeWidget::mousePressEvent(event);
  const auto* pressed = itemAt(event->position().toPoint());
  if (!told_ && pressed != nullptr && pressed->isSelected()) TellClick();  // on the selected one again
}

void TreeView::keyPressEvent(QKeyEvent* event) {
  const bool moves = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
  if (moves && selectedItems().isEmpty() && topLevelItemCount() > 0) {
    setCurrentItem(topLevelItem(0));
  } else {
    QTreeWidget::keyPressEvent(event);
  }
}

void TreeView::changeEvent(QEvent* event) {
  QTreeWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && tree_ != nullptr) DressAll();
}

void Bind(Tree& tree, TreeView& view, const QString& name, TreeView::Pictures pictures) {
  new Binding(tree, view);
  view.SetTree(tree, name, std::move(pictures));
}

}  // namespace desktop
