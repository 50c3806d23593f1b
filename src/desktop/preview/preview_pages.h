#pragma once

#include <functional>

#include <QPdfDocument>
#include <QPdfSearchModel>
#include <QPdfView>

namespace desktop {

/// The pages of a PDF file below one another, with a zoom, and what a search finds marked on them.
class PreviewPages : public QPdfView {
 public:
  explicit PreviewPages(QWidget* parent = nullptr);
  ~PreviewPages() override { setDocument(nullptr); }

  /// Returns whether the file could be read.
  bool Load(const QString& pdf);

  void ZoomBy(qreal factor);
  /// Pages as wide as the window, also when it changes its size.
  void FitWidth();

  /// Searches from the first page; "" ends the search.
  void Search(const QString& text);
  /// Goes to the next find, or the one before, round the document.
  void GoToFind(int step);
  /// How many were found so far, and which one is shown (from 0; -1 before the first).
  int finds() const;
  int current_find() const { return current_find_; }

  std::function<void()> finds_changed;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  qreal PixelsPerPoint() const;
  QRectF PageRect(int page) const;
  QRectF FindRect(const QPdfLink& find, const QRectF& rectangle) const;
  void ShowCurrentFind();
  void FindsChanged();

  QPdfDocument file_;
  QPdfSearchModel search_;
  int current_find_ = -1;
  bool fits_width_ = true;
};

}  // namespace desktop
