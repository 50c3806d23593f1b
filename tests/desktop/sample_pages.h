#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/fakes/fake_services.h"
#include "workspace/pages/grid_style.h"
#include "workspace/pages/pages.h"

namespace tests {

/// The three pages with something on them, as an officer sees them in the middle of the day.
class SamplePages {
 public:
  SamplePages() {
    services.reference.AnswersBy([](const std::string&) { return LetterTypes(40); });
    FillPanel(pages.correspondence.panel);
    FillPanel(pages.tracking.panel);
    pages.correspondence.ZEMLO_LetterType.SetText("Certificate of Tax Liability");
    pages.correspondence.txtFormNum.SetText("1000017-1");
    pages.tracking.from_date.SetValue(platform::ParseDate("2024-02-01"));
    pages.tracking.to_date.SetValue(platform::ParseDate("2024-03-05"));
    pages.tracking.OptLetterStatus[workspace::TrackingPage::kAll].SetSelected(true);
    pages.batch.OptBatchDate[workspace::BatchPage::kDateRange].SetSelected(true);
    pages.batch.OptBatchStatus[0].SetSelected(true);
    pages.batch.station.SetCaption("Troop/District: B12");
    for (const auto page : {workspace::PageIndex::kCorrespondence, workspace::PageIndex::kTracking,
                            workspace::PageIndex::kBatch}) {
      workspace::SetGridBolding(services.services(), pages.sdgGrid(page));
      pages.sdgGrid(page).Bind(RowsOf(pages.sdgGrid(page), 60));
    }
  }

  /// A list as the reference database gives it: a blank row first, then descriptions in order.
  static std::shared_ptr<platform::RecordSet> LetterTypes(int count) {
    auto rows =
        std::make_shared<platform::RecordSet>(std::vector<std::string>{"CD_TBL_CD", "CD_TBL_DES", "LTR_IND"});
    rows->Append({"", "", ""});
    for (int number = 0; number < count; ++number) {
      auto text = std::to_string(number);
      text.insert(0, 4 - text.size(), '0');
      rows->Append({text, "Notice of tax due " + text, "O"});
    }
    rows->MoveFirst();
    return rows;
  }

  fakes::FakeServices services;
  workspace::Pages pages{services.services()};

 private:
  static void FillPanel(customers::CustomerPanel& panel) {
    panel.name.SetCaption("Meadow && Sons Fuel Haulage Cooperative");
    panel.address.SetCaption("1420 North Harbor Industrial Road, Suite 400");
    panel.city_line.SetCaption("Lower Kettleford, KV 40213-1177");
    panel.phone.SetCaption("(555) 010-0142");
    panel.fuel_tax_account.SetCaption("11-000000214-01");
    panel.customer_id.SetCaption("C0000214");
  }

  static std::shared_ptr<platform::RecordSet> RowsOf(const platform::Grid& grid, int count) {
    std::vector<std::string> names;
    for (const auto& column : grid.columns) names.push_back(column.key);
    auto rows = std::make_shared<platform::RecordSet>(names);
    for (int number = 0; number < count; ++number) {
      std::vector<platform::Value> values;
      for (const auto& name : names) values.emplace_back(CellOf(name, number));
      rows->Append(std::move(values));
    }
    rows->MoveFirst();
    return rows;
  }

  static std::string CellOf(const std::string& column, int number) {
    static const std::map<std::string, std::vector<std::string>> kSamples = {
        {"DCMT_FILE_TXT", {"CTL_0304.DOCX", "TAX_WARRANT_0304.DOCX", "REG101_2401.DOCX"}},
        {"Job_Type", {"Batch", "Batch", "Online"}},
        {"FORM_NBR_WITH_DGT", {"3100004-9", "1000017-1"}},
        {"Form_Type", {"Citation", "License", "Fuel Tax Receipt"}},
        {"FORM_TYP_CD", {"C", "L", "R"}},
        {"FORM_CK_DGT_NBR", {"9", "1", "X"}},
        {"SYS_RFRNC_CD", {"B", "B", "O"}},
        {"BTCH_ACTN_DESC", {"", "Reprint by the batch", ""}},
        {"QZ_CNTY_DESC", {"Kettleford", "North Harbor", "Lower Meadow"}},
        {"TroopDistrict", {"B12", "A01"}},
        {"PRNT_STTS_DESC", {"Failed", "Printed", "Printed"}},
        {"PRNT_STTS_CD", {"F", "P", "P"}},
        {"PRCS_ERR_TXT", {"The customer has no mailing address that can be delivered to.", "", ""}},
        {"OFFICER_NAME", {"R. Alder", "M. Okonkwo-Lindqvist"}},
        {"BTCH_STATUS", {"SUCCESSFUL"}},
    };
    if (column.ends_with("_TS")) return "2024-03-05 02.11.0" + std::to_string(number % 10);
    const auto sample = kSamples.find(column);
    if (sample == kSamples.end()) return std::to_string(1000 + number);
    return sample->second[static_cast<std::size_t>(number) % sample->second.size()];
  }
};

}  // namespace tests
