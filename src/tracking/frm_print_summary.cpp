#include "tracking/frm_print_summary.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "platform/record_set.h"
#include "platform/text.h"

namespace tracking {

namespace {

constexpr auto kColumns = std::to_array<std::pair<const char*, const char*>>({
    {"LETTER", "Letter"},
    {"SEQ_NBR", "Number"},
    {"REASON", "What went wrong"},
});

}  // namespace

frmPrintSummary::frmPrintSummary(const std::string& said, const std::vector<FailedLetter>& failed)
    : Form("Print Summary"), outcome(said) {
  for (const auto& [key, caption] : kColumns) {
    platform::Grid::Column column;
    column.key = key;
    column.caption = caption;
    letters.columns.push_back(std::move(column));
  }
  auto rows = std::make_shared<platform::RecordSet>(std::vector<std::string>{"LETTER", "SEQ_NBR", "REASON"});
  for (const auto& letter : failed) rows->Append({letter.name, letter.number, letter.reason});
  letters.Bind(std::move(rows));
  again.SetEnabled(!std::ranges::all_of(failed, &FailedLetter::is_printed));
  again.why_disabled = [] { return "All letters of this list were printed; only their records failed."; };

  connections_.push_back(letters.Click.Connect([this] { ShowReason(); }));
  connections_.push_back(close.Click.Connect([this] { Close(); }));
  connections_.push_back(again.Click.Connect([this] {
    PrintAgain = true;
    Close();
  }));
}

void frmPrintSummary::ShowReason() {
  const auto& selected = letters.selected_rows();
  const auto text = selected.size() == 1 ? letters.rows()->Text(selected.front(), "REASON") : "";
  reason.SetCaption(platform::ReplaceAll(text, "&", "&&"));
}

}  // namespace tracking
