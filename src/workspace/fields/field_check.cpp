#include "workspace/fields/field_check.h"

#include <algorithm>

#include "platform/agreed/letter_types.h"
#include "platform/text.h"

namespace workspace {

namespace {

template <typename Options>
bool NoneSelected(Options& options) {
  return std::ranges::none_of(options, [](const auto& option) { return option.selected(); });
}

// A text that no row of the list has.
bool IsTypedOnly(composition::ZEMLO_LetterCombo& list) {
  return !list.GetText().empty() && list.Code().empty();
}

}  // namespace

void FieldCheck::CheckEdit(PageIndex page) {
  platform::Trap(services_, "ZEMLO_Corresp.CheckEdit", [&] {
    DefaultFieldColor(page);
    switch (page) {
      case PageIndex::kCorrespondence: {
        auto& options = pages_.correspondence.OptOnline;
        options[CorrespondencePage::kCreateLetter].SetEnabled(Apply(page, Rules(page)));
        options[CorrespondencePage::kClear].SetEnabled(true);
        break;
      }
      case PageIndex::kTracking:
        pages_.tracking.search.SetEnabled(Apply(page, Rules(page)));
        break;
      case PageIndex::kBatch:
        pages_.batch.cmdBatch[BatchPage::kSearch].SetEnabled(Apply(page, Rules(page)));
        break;
      case PageIndex::kBatchReprint:
        break;
    }
  });
}

void FieldCheck::EnableCreateLetter() {
  platform::Trap(services_, "ZEMLO_Corresp.CheckEdit", [&] {
    pages_.correspondence.OptOnline[CorrespondencePage::kCreateLetter].SetEnabled(
        std::ranges::none_of(CorrespondenceRules(), &Rule::broken));
  });
}

std::string FieldCheck::WhyDisabled(PageIndex page) {
  std::string lines;
  platform::Trap(services_, "ZEMLO_Corresp.CheckEdit", [&] {
    for (const auto& rule : Rules(page)) {
      if (!rule.broken) continue;
      if (!lines.empty()) lines += "\n";
      lines += rule.message;
      if (!rule.reason.empty()) lines += ": " + rule.reason;
    }
  });
  return lines;
}

std::vector<FieldCheck::Rule> FieldCheck::Rules(PageIndex page) {
  switch (page) {
    case PageIndex::kCorrespondence:
      return CorrespondenceRules();
    case PageIndex::kTracking:
      return TrackingRules();
    case PageIndex::kBatch:
      return BatchRules();
    case PageIndex::kBatchReprint:
      break;
  }
  return {};
}

std::vector<FieldCheck::Rule> FieldCheck::CorrespondenceRules() {
  auto& page = pages_.correspondence;
  const bool has_letter = !page.ZEMLO_LetterType.Code().empty();
  const bool has_form_type = !page.ZEMLO_FormTypeCodes.Code().empty();
  const bool is_for_customer = has_letter && page.ZEMLO_LetterType.Tag.empty();
  const bool is_for_document = has_letter && !is_for_customer;
  const auto number = is_for_document ? JudgeFormNumber(page) : platform::Utilities::FormNumberVerdict{};
  const auto is_batch_letter = [&page] {
    return platform::UpperCase(platform::Trim(page.ZEMLO_LetterType.OnlineInd())) ==
           platform::made_where::kBatch;
  };
  return {
      {!has_letter, "Please select a correspondence type", &page.ZEMLO_LetterType},
      {is_for_customer && page.panel.customer_id.caption().empty(), "Customer ID is required"},
      {!has_letter && (has_form_type || !page.txtFormNum.IsEmpty()), "Letter template is required",
       &page.ZEMLO_LetterType},
      {is_for_document && page.txtFormNum.IsEmpty(), "Form number is required", &page.txtFormNum},
      {!number.valid, "Form number is invalid", &page.txtFormNum, number.text},
      {is_for_document && !has_form_type, "Form type is required", &page.ZEMLO_FormTypeCodes},
      {!takes_every_letter_ && is_batch_letter(), "Batch letter is not available to view",
       &page.ZEMLO_LetterType},
  };
}

std::vector<FieldCheck::Rule> FieldCheck::TrackingRules() {
  auto& page = pages_.tracking;
  const auto number =
      page.txtFormNum.IsEmpty() ? platform::Utilities::FormNumberVerdict{} : JudgeFormNumber(page);
  return {
      {NothingToSearchFor(), "Please select criteria"},
      {!number.valid, "Form number is invalid", &page.txtFormNum, number.text},
      {IsTypedOnly(page.ZEMLO_FormTypeCodes), "Form type is invalid", &page.ZEMLO_FormTypeCodes},
      {IsTypedOnly(page.ZEMLO_LetterType), "Letter type is invalid", &page.ZEMLO_LetterType},
      {NoneSelected(page.OptLetterStatus), "Letter option is required"},
  };
}

bool FieldCheck::NothingToSearchFor() {
  auto& page = pages_.tracking;
  return page.ZEMLO_LetterType.Code().empty() && page.panel.customer_id.caption().empty() &&
         page.ZEMLO_FormTypeCodes.Code().empty() && page.txtFormNum.IsEmpty() && page.from_date.IsEmpty() &&
         page.to_date.IsEmpty() && page.txtBatch.IsEmpty();
}

std::vector<FieldCheck::Rule> FieldCheck::BatchRules() {
  auto& page = pages_.batch;
  const bool by_range = page.OptBatchDate[BatchPage::kDateRange].selected();
  const auto& start = page.start_date.value();
  const auto& end = page.end_date.value();
  return {
      {NoneSelected(page.OptBatchDate), "Date/Date range is required"},
      {by_range && !start, "Date is required if date range is selected"},
      {by_range && start && end && *end < *start, "End date could not be earlier than start date"},
      {NoneSelected(page.OptBatchStatus), "Status is required"},
  };
}

platform::Utilities::FormNumberVerdict FieldCheck::JudgeFormNumber(LetterPage& page) {
  return services_.utilities.ValidateFormNumber(page.ZEMLO_FormTypeCodes.Code(), page.txtFormNum.text());
}

bool FieldCheck::Apply(PageIndex page, const std::vector<Rule>& rules) {
  auto& messages = messages_[page];
  messages.clear();
  for (const auto& [broken, message, marked, reason] : rules) {
    if (!broken) continue;
    messages.emplace_back(message);
    if (marked != nullptr) services_.utilities.MarkFieldInvalid(*marked);
  }
  return messages.empty();
}

void FieldCheck::DefaultFieldColor(PageIndex index) {
  platform::Trap(services_, "ZEMLO_Corresp.DefaultFieldColor", [&] {
    for (auto* field : CheckedFields(index)) services_.utilities.MarkFieldValid(*field);
  });
}

std::vector<platform::Control*> FieldCheck::CheckedFields(PageIndex index) {
  auto& tracking = pages_.tracking;
  auto& batch = pages_.batch;
  std::vector<platform::Control*> fields;
  if (index == PageIndex::kCorrespondence || index == PageIndex::kTracking) {
    auto& page = pages_.Letter(index);
    fields = {&page.txtFormNum, &page.ZEMLO_LetterType, &page.ZEMLO_FormTypeCodes};
  }
  if (index == PageIndex::kTracking) {
    fields.insert(fields.end(), {&tracking.from_date, &tracking.to_date});
    for (auto& option : tracking.OptLetterStatus) fields.push_back(&option);
  }
  if (index == PageIndex::kBatch) {
    fields = {&batch.start_date, &batch.end_date};
    for (auto& option : batch.OptBatchStatus) fields.push_back(&option);
    for (auto& option : batch.OptBatchDate) fields.push_back(&option);
  }
  return fields;
}

void FieldCheck::ClearEdit() {
  platform::Trap(services_, "ZEMLO_Corresp.ClearEdit", [&] {
    services_.utilities.MarkFieldValid(pages_.tracking.from_date);
    services_.utilities.MarkFieldValid(pages_.tracking.to_date);
  });
}

}  // namespace workspace
