#include "desktop/forms/statistics_picture.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <algorithm>
#include <array>

namespace desktop {
namespace {

constexpr std::array<const char*, 3> kParts = {"Succeeded", "Failed", "Outstanding (not processed)"};
constexpr std::array<Qt::BrushStyle, 3> kPatterns = {Qt::SolidPattern, Qt::BDiagPattern, Qt::NoBrush};
constexpr int kNameColumns = 30;  // characters of a letter type's name
constexpr int kSmallestWidth = 70;
constexpr int kMargin = 4;  // pixels

int Count(const platform::RecordSet& rows, std::size_t row, const char* column) {
  const auto& value = rows.Get(row, column);
  return value.IsNull() ? 0 : static_cast<int>(value.AsInteger());
}

}  // namespace

StatisticsPicture::StatisticsPicture(tracking::frmBatchStat& form, QWidget* parent)
    : QWidget(parent), statistics_(form.sdgGrid) {
  setAccessibleName(QStringLiteral("Letters by type"));
  setFocusPolicy(Qt::TabFocus);
  changed_ = statistics_.ContentChanged.Connect([this] { Read(); });
  Read();
}

void StatisticsPicture::Read() {
  bars_.clear();
  QStringList said;
  const auto rows = statistics_.rows();
  for (std::size_t row = 0; rows && row < rows->RecordCount(); ++row) {
    const int letters = Count(*rows, row, "LETTER_COUNT");
    const int processed = Count(*rows, row, "PROCESS_COUNT");
    Bar bar{QString::fromStdString(rows->HasColumn("LTR_NM") ? rows->Text(row, "LTR_NM") : ""),
            {Count(*rows, row, "SUCCESS_COUNT"), Count(*rows, row, "FAILURE_COUNT"),
             std::max(letters - processed, 0)}};
    said << QStringLiteral("%1: %2 succeeded, %3 failed, %4 outstanding")
                .arg(bar.name)
                .arg(bar.parts[0])
                .arg(bar.parts[1])
                .arg(bar.parts[2]);
    bars_.push_back(std::move(bar));
  }
  setAccessibleDescription(said.join(QStringLiteral(". ")));
  updateGeometry();
  setMinimumHeight(sizeHint().height());
  update();
}

QSize StatisticsPicture::sizeHint() const {
  const int lines = static_cast<int>(std::max<std::size_t>(bars_.size(), 1)) + 1;
  return {kSmallestWidth * fontMetrics().averageCharWidth(), lines * LineHeight()};
}

void StatisticsPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Paint(painter, size());
}

void StatisticsPicture::Paint(QPainter& painter, const QSize& size) const {
  painter.fillRect(QRect(QPoint(0, 0), size), palette().base());
  painter.setPen(palette().text().color());
  painter.setFont(font());
  if (bars_.empty()) {
    painter.drawText(QRect(QPoint(0, 0), size), Qt::AlignCenter, QStringLiteral("No statistics"));
    return;
  }
  const int height = LineHeight();
  PaintLegend(painter, {0, 0, size.width(), height});
  const int names = kNameColumns * fontMetrics().averageCharWidth();
  const int total = fontMetrics().horizontalAdvance(QStringLiteral(" 000000"));
  const int most = std::ranges::max(bars_, {}, &Bar::Total).Total();
  const double width_of_one = double(std::max(size.width() - names - total, 1)) / std::max(most, 1);
  for (std::size_t bar = 0; bar < bars_.size(); ++bar)
    PaintBar(painter, bars_[bar], {0, static_cast<int>(bar + 1) * height, size.width(), height},
             width_of_one);
}

void StatisticsPicture::PaintLegend(QPainter& painter, const QRect& line) const {
  int left = kNameColumns * fontMetrics().averageCharWidth();
  const int side = line.height() / 2;
  for (int part = 0; part < 3; ++part) {
    PaintPart(painter, part, {left, line.top() + side / 2, side, side}, 0);
    left += side * 3 / 2;
    const auto name = QString::fromUtf8(kParts[static_cast<std::size_t>(part)]);
    painter.drawText(QRect(left, line.top(), line.right() - left, line.height()), Qt::AlignVCenter, name);
    left += fontMetrics().horizontalAdvance(name) + side * 2;
  }
}

void StatisticsPicture::PaintBar(QPainter& painter, const Bar& bar, const QRect& line,
                                 double width_of_one) const {
  const int names = kNameColumns * fontMetrics().averageCharWidth();
  const auto name =
      fontMetrics().elidedText(bar.name, Qt::ElideRight, names - fontMetrics().averageCharWidth() - kMargin);
  painter.drawText(QRect(line.left() + kMargin, line.top(), names, line.height()), Qt::AlignVCenter, name);
  double left = names;
  for (int part = 0; part < 3; ++part) {
    const double width = bar.parts[part] * width_of_one;
    if (bar.parts[part] > 0) {
      PaintPart(painter, part, QRectF(left, line.top() + 2, width, line.height() - 4).toRect(),
                bar.parts[part]);
      left += width;
    }
  }
  painter.drawText(QRectF(left, line.top(), line.right() - left, line.height()), Qt::AlignVCenter,
                   QStringLiteral(" %1").arg(bar.Total()));
}

void StatisticsPicture::PaintPart(QPainter& painter, int part, const QRect& box, int count) const {
  const auto ink = palette().text().color();
  const bool is_solid = kPatterns[static_cast<std::size_t>(part)] == Qt::SolidPattern;
  painter.save();
  painter.setPen(ink);
  painter.setBrush(
      QBrush(is_solid ? palette().highlight().color() : ink, kPatterns[static_cast<std::size_t>(part)]));
  painter.drawRect(box.adjusted(0, 0, -1, -1));
  const auto number = QString::number(count);
  const int room = fontMetrics().horizontalAdvance(number) + 6;
  if (count > 0 && room <= box.width()) {
    // Behind the number nothing of the pattern: it has to be read.
    const QRect plate(box.center().x() - room / 2, box.top() + 1, room, box.height() - 2);
    if (!is_solid) painter.fillRect(plate, palette().base());
    painter.setPen(is_solid ? palette().highlightedText().color() : ink);
    painter.drawText(plate, Qt::AlignCenter, number);
  }
  painter.restore();
}

QPixmap StatisticsPicture::Picture() const {
  QPixmap picture(size() * devicePixelRatio());
  picture.setDevicePixelRatio(devicePixelRatio());
  QPainter painter(&picture);
  Paint(painter, size());
  return picture;
}

void StatisticsPicture::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  menu.addAction(QStringLiteral("&Copy Picture"), this,
                 [this] { QApplication::clipboard()->setPixmap(Picture()); });
  menu.addAction(QStringLiteral("&Save Picture As..."), this, [this] { Save(); });
  menu.exec(event->globalPos());
}

void StatisticsPicture::Save() {
  auto file = QFileDialog::getSaveFileName(this, QStringLiteral("Save Picture As"),
                                           QStringLiteral("Batch Statistics.png"),
                                           QStringLiteral("Pictures (*.png)"));
  if (file.isEmpty()) return;
  if (!file.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive)) file += QStringLiteral(".png");
  if (Picture().save(file, "PNG")) return;
  QMessageBox::warning(
      this, window()->windowTitle(),
      QStringLiteral("The picture could not be written to \"%1\". Choose another folder.").arg(file));
}

}  // namespace desktop
