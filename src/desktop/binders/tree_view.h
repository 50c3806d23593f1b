#pragma once

#include <functional>
#include <string>

#include <QIcon>
#include <QTreeWidget>

#include "platform/controls/tree.h"

namespace desktop {

/// A tree on the screen. Whatever selects a node, mouse or keyboard, is a click on it.
class TreeView : public QTreeWidget {
 public:
  /// The picture of a key of the tree's image list; a null icon for none.
  using Pictures = std::function<QIcon(const std::string& key)>;

  explicit TreeView(QWidget* parent = nullptr);

  /// Once; the tree outlives the view. A picture's meaning is read out after the node's text.
  void SetTree(platform::Tree& tree, const QString& name, Pictures pictures);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void ShowNodes();
  QTreeWidgetItem* ItemsOf(platform::Tree::Node& top);
  void Dress(QTreeWidgetItem& item) const;
  void DressAll();
  void TellClick();

  platform::Tree* tree_ = nullptr;
  Pictures pictures_;
  platform::Connection content_changed_;
  bool told_ = false;  // of a click, since the mouse button went down
};

/// `name` is the accessible name.
void Bind(platform::Tree& tree, TreeView& view, const QString& name, TreeView::Pictures pictures);

}  // namespace desktop
