#include "tracking/row_format.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/agreed/letter_record.h"
#include "platform/text.h"

namespace tracking {

namespace {

using platform::Trim;
using workspace::PageIndex;

/// A letter being dressed.
class Letter {
 public:
  Letter(platform::Utilities& utilities, workspace::LetterNames& names, bool with_diagnostics,
         platform::RecordSet& rows, std::size_t row)
      : utilities_(utilities), names_(names), with_diagnostics_(with_diagnostics), rows_(rows), row_(row) {}

  void DescribeBatchAction() {
    const auto code = Text("BTCH_ACTN_CD");
    Describe("BTCH_ACTN_DESC", "LTRBATCH", code.empty() ? "BNK" : code);
  }
  void NameOfficer() {
    const auto id = Text("LST_UPDT_INSP_ID");
    if (id.empty()) throw platform::AbandonStep();
    const std::string name(Trim(utilities_.GetOfficerName(id)));
    Set("OFFICER_NAME", name.empty() ? id : name);
  }
  void DescribeFormType() { DescribeIfGiven("Form_Type", "REFDOCTYP", Text("FORM_TYP_CD")); }
  void DescribePrintStatus() { DescribeIfGiven("PRNT_STTS_DESC", "LTRPRNTCD", Text("PRNT_STTS_CD")); }
  void JoinFormNumber() {
    Set("FORM_NBR_WITH_DGT", std::string(Trim(Text("FORM_NBR"))) + "-" + Text("FORM_CK_DGT_NBR"));
  }
  void NameJobType() {
    const auto produced = Text("SYS_RFRNC_CD");
    if (produced == platform::letter_origin::kOnline) Set("Job_Type", "Online");
    if (produced == platform::letter_origin::kBatch) Set("Job_Type", "Batch");
  }
  void CapitalizeFileName() { Set("DCMT_FILE_TXT", platform::UpperCase(Text("DCMT_FILE_TXT"))); }
  void NameLetter() {
    const auto type = Text("LTR_TYP_ID");
    if (!type.empty()) Set("LTR_NM", names_.NameOf(type));
  }
  void JoinTroopDistrict() { Set("TroopDistrict", Text("TRP_ID") + Text("TRP_DIST_ID")); }
  void AddSequenceNumber() {
    if (with_diagnostics_) Set("FLS_BTCH_NBR", Text("FLS_BTCH_NBR") + "/" + Text("SEQ_NBR"));
  }

 private:
  std::string Text(std::string_view column) const { return rows_.Text(row_, column); }
  void Set(std::string_view column, const std::string& text) { rows_.Set(row_, column, text); }
  void Describe(std::string_view column, const char* table, const std::string& code) {
    Set(column, std::string(Trim(utilities_.GetCodeDescription(table, code))));
  }
  void DescribeIfGiven(std::string_view column, const char* table, const std::string& code) {
    if (!code.empty()) Describe(column, table, code);
  }

  platform::Utilities& utilities_;
  workspace::LetterNames& names_;
  const bool with_diagnostics_;
  platform::RecordSet& rows_;
  const std::size_t row_;
};

using Step = void (Letter::*)();

constexpr auto kCorrespondenceSteps = std::to_array<Step>({
    &Letter::NameOfficer,
    &Letter::DescribeFormType,
    &Letter::DescribePrintStatus,
    &Letter::JoinFormNumber,
    &Letter::CapitalizeFileName,
    &Letter::NameLetter,
});

constexpr auto kTrackingSteps = std::to_array<Step>({
    &Letter::DescribeBatchAction,
    &Letter::NameOfficer,
    &Letter::DescribeFormType,
    &Letter::DescribePrintStatus,
    &Letter::JoinFormNumber,
    &Letter::NameJobType,
    &Letter::CapitalizeFileName,
    &Letter::JoinTroopDistrict,
    &Letter::NameLetter,
    &Letter::AddSequenceNumber,
});

constexpr auto kTrackingStepsAgain = std::to_array<Step>({
    &Letter::DescribeBatchAction,
    &Letter::DescribePrintStatus,
});
constexpr auto kCorrespondenceStepsAgain = std::to_array<Step>({&Letter::DescribePrintStatus});

std::span<const Step> StepsOf(PageIndex grid) {
  if (grid == PageIndex::kCorrespondence) return kCorrespondenceSteps;
  if (grid == PageIndex::kTracking) return kTrackingSteps;
  return {};
}

std::span<const Step> StepsAgainOf(PageIndex grid) {
  if (grid == PageIndex::kCorrespondence) return kCorrespondenceStepsAgain;
  if (grid == PageIndex::kTracking) return kTrackingStepsAgain;
  return {};
}

}  // namespace

void RowFormat::sdgGrid_RowLoaded(PageIndex grid, std::size_t row) {
  Dress(grid, row, StepsOf(grid));
}

void RowFormat::DressAgain(PageIndex grid, std::size_t row) {
  Dress(grid, row, StepsAgainOf(grid));
}

template <typename Steps>
void RowFormat::Dress(PageIndex grid, std::size_t row, const Steps& steps) {
  const auto rows = pages_.sdgGrid(grid).rows();
  if (!rows) return;
  const platform::RecordSet::Edit edit(*rows);
  Letter letter(services_.utilities, names_, with_diagnostics_, *rows, row);
  for (const auto step : steps) {
    platform::Trap(services_, "ZEMLO_Correspondence.sdgGrid_RowLoaded", [&] { (letter.*step)(); });
  }
}

}  // namespace tracking
