#include "desktop/binders/grid_columns.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <sstream>
#include <utility>

#include <QHeaderView>

namespace desktop {
namespace {

using namespace std::chrono_literals;

constexpr int kWidestFitInCharacters = 34;
constexpr int kWideViewInCharacters = 190;
constexpr int kRoomInColumn = 7;
constexpr int kUnknown = 0;
constexpr int kNarrowest = 12;
constexpr int kWidest = 4000;
constexpr auto kUntilSaved = 300ms;  // a width changes with every pixel of a drag

// One word a column, in the order they stand in: "KEY", "KEY=width"; "-" before one that the user hid, "+"
// before one that he asked for.
constexpr char kHiddenMark = '-';
constexpr char kShownMark = '+';
constexpr char kWidthMark = '=';

}  // namespace

/// Changes to the heading while it lives are our own.
class GridColumns::Arranging {
 public:
  explicit Arranging(GridColumns& columns)
      : columns_(columns), before_(std::exchange(columns.arranging_, true)) {}
  Arranging(const Arranging&) = delete;
  Arranging& operator=(const Arranging&) = delete;
  ~Arranging() { columns_.arranging_ = before_; }

 private:
  GridColumns& columns_;
  const bool before_;
};

GridColumns::GridColumns(QTableView& view, const GridModel& model) : view_(view), model_(model) {
  auto* heading = view.horizontalHeader();
  heading->setResizeContentsPrecision(0);  // rows in sight only: reading a row loads it
  QObject::connect(heading, &QHeaderView::sectionResized, &save_soon_,
                   [this](int section, int, int width) { Resized(section, width); });
  QObject::connect(heading, &QHeaderView::sectionMoved, &save_soon_, [this] {
    if (!arranging_) Changed();
  });
  save_soon_.setSingleShot(true);
  save_soon_.setInterval(kUntilSaved);
  QObject::connect(&save_soon_, &QTimer::timeout, &save_soon_, [this] { Save(); });
  Refresh();
}

GridColumns::~GridColumns() {
  if (save_soon_.isActive()) Save();
}

void GridColumns::RememberIn(platform::ViewSettings& settings, const std::string& name) {
  settings_ = &settings;
  name_ = "Columns of " + name;
  Read(settings.Remembered(name_));
  Refresh();
}

void GridColumns::Refresh() {
  const Arranging ours(*this);
  for (int section = 0; section < model_.columnCount(); ++section) {
    view_.setColumnHidden(section, !IsShown(section));
  }
  if (fitted_widths_.size() != static_cast<std::size_t>(model_.columnCount())) fitted_widths_.clear();
  if (Shown().empty() && !user_shown_.empty()) ShowAll();
}

bool GridColumns::IsShown(int section) const {
  if (!IsOffered(section)) return false;
  const auto choice = user_shown_.find(KeyOf(section));
  return choice != user_shown_.end() ? choice->second : IsShownAtFirst(section);
}

bool GridColumns::IsShownAtFirst(int section) const {
  using AtFirst = platform::Grid::AtFirst;
  const auto at_first = model_.column(section).at_first;
  return at_first == AtFirst::kShown || (at_first == AtFirst::kShownWhereWide && wide_);
}

// What the user did not choose goes on following the grid, and the width of the view.
void GridColumns::Choose(int section, bool shown) {
  user_shown_.erase(KeyOf(section));
  if (IsShownAtFirst(section) != shown) user_shown_[KeyOf(section)] = shown;
}

void GridColumns::Fit() {
  if (!fitted_widths_.empty()) return;
  fitted_widths_.assign(static_cast<std::size_t>(model_.columnCount()), kUnknown);
  Fill();
  if (model_.rowCount() == 0) fitted_widths_.clear();
}

int GridColumns::WidthOf(int section) {
  const auto user = user_widths_.find(KeyOf(section));
  if (user != user_widths_.end()) return user->second;
  auto& fitted = fitted_widths_.at(static_cast<std::size_t>(section));
  if (fitted == kUnknown) {
    view_.resizeColumnToContents(section);
    const int widest = view_.fontMetrics().averageCharWidth() * kWidestFitInCharacters;
    fitted = std::min(view_.columnWidth(section) + kRoomInColumn, widest);
  }
  return fitted;
}

void GridColumns::Fill() {
  const int widest = view_.fontMetrics().averageCharWidth() * kWideViewInCharacters;
  const bool is_wide = view_.viewport()->width() >= widest;
  if (std::exchange(wide_, is_wide) != is_wide) Refresh();
  const auto shown = Shown();
  if (shown.empty() || fitted_widths_.empty()) return;
  const Arranging ours(*this);
  const bool stretched = view_.horizontalHeader()->stretchSectionCount() > 0;
  int left = view_.viewport()->width();
  for (const int section : shown) {
    const int width = WidthOf(section);
    const bool takes_rest = section == shown.back() && !stretched && !user_widths_.contains(KeyOf(section));
    view_.setColumnWidth(section, takes_rest ? std::max(width, left) : width);
    left -= width;
  }
}

bool GridColumns::CanHide(int section) const {
  const auto shown = Shown();
  return shown.size() > 1 && std::ranges::find(shown, section) != shown.end();
}

std::vector<int> GridColumns::Shown() const {
  std::vector<int> shown;
  const auto* heading = view_.horizontalHeader();
  for (int place = 0; place < heading->count(); ++place) {
    const int section = heading->logicalIndex(place);
    if (!heading->isSectionHidden(section)) shown.push_back(section);
  }
  return shown;
}

void GridColumns::SetShown(int section, bool shown) {
  if (!IsOffered(section) || (!shown && !CanHide(section))) return;
  Choose(section, shown);
  Refresh();
  Fill();
  Changed();
}

void GridColumns::ShowAll() {
  for (int section = 0; section < model_.columnCount(); ++section) Choose(section, true);
  Refresh();
  Fill();
  Changed();
}

void GridColumns::FitToContents(int section) {
  {
    const Arranging ours(*this);
    view_.resizeColumnToContents(section);
  }
  user_widths_[KeyOf(section)] = view_.columnWidth(section);
  Changed();
}

void GridColumns::Reset() {
  user_widths_.clear();
  fitted_widths_.clear();
  std::vector<std::string> keys;
  for (int section = 0; section < model_.columnCount(); ++section) keys.push_back(KeyOf(section));
  Order(keys);
  user_shown_.clear();
  Refresh();
  Fit();
  save_soon_.stop();
  if (settings_ != nullptr) settings_->Remember(name_, "");
}

void GridColumns::Resized(int section, int width) {
  if (arranging_ || width == 0) return;  // a hidden column has no width
  if (view_.horizontalHeader()->sectionResizeMode(section) != QHeaderView::Interactive) return;
  user_widths_[KeyOf(section)] = width;
  Changed();
}

void GridColumns::Changed() {
  if (settings_ != nullptr) save_soon_.start();
}

void GridColumns::Save() {
  settings_->Remember(name_, AsText());
}

std::string GridColumns::AsText() const {
  std::string text;
  const auto* heading = view_.horizontalHeader();
  for (int place = 0; place < heading->count(); ++place) {
    const auto& key = KeyOf(heading->logicalIndex(place));
    if (!text.empty()) text += ' ';
    const auto choice = user_shown_.find(key);
    if (choice != user_shown_.end()) text += choice->second ? kShownMark : kHiddenMark;
    text += key;
    const auto width = user_widths_.find(key);
    if (width != user_widths_.end()) text += kWidthMark + std::to_string(width->second);
  }
  return text;
}

void GridColumns::Read(const std::string& text) {
  std::istringstream words(text);
  std::vector<std::string> keys;
  for (std::string word; words >> word;) {
    const char choice = word.front();
    const bool is_chosen = choice == kHiddenMark || choice == kShownMark;
    if (is_chosen) word.erase(0, 1);
    const auto mark = word.find(kWidthMark);
    const auto key = word.substr(0, mark);
    int width = 0;
    if (mark != std::string::npos) std::from_chars(&word[mark] + 1, word.data() + word.size(), width);
    if (width > 0) user_widths_[key] = std::clamp(width, kNarrowest, kWidest);
    if (is_chosen) user_shown_[key] = choice == kShownMark;
    keys.push_back(key);
  }
  Order(keys);
}

// Columns that are not named come after those that are.
void GridColumns::Order(const std::vector<std::string>& keys) {
  const Arranging ours(*this);
  auto* heading = view_.horizontalHeader();
  int place = 0;
  for (const auto& key : keys) {
    for (int section = 0; section < model_.columnCount(); ++section) {
      if (KeyOf(section) != key || heading->visualIndex(section) < place) continue;
      heading->moveSection(heading->visualIndex(section), place);
      ++place;
    }
  }
}

}  // namespace desktop
