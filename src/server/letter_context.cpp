#include "server/letter_context.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "server/field_sources.h"

namespace server {
namespace {

constexpr std::string_view kAddressSource = "customer.address";

FlagWord KindState(FieldKind kind) {
  switch (kind) {
    case FieldKind::kSystem:
      return state::kSystem | state::kCanDisplay;
    case FieldKind::kData:
      return state::kCanDisplay;
    case FieldKind::kTable:
      return state::kTable;
    case FieldKind::kColumn:
      return state::kTableColumn;
    case FieldKind::kUser:
      return state::kUser | state::kCanDisplay | state::kEditable;
    case FieldKind::kParagraph:
      return state::kParagraph | state::kCanDisplay;
  }
  return 0;
}

FlagWord ErrorOf(const FieldValue& value) {
  if (!value.found) return error::kNoRow;
  if (value.raw.empty()) return error::kNull;
  if (value.IsEmpty()) return error::kEmpty;
  return value.is_zero ? error::kZero : 0;
}

void SetValue(ContextField& field, const FieldValue& value, bool required) {
  if (required) field.error = ErrorOf(value);
  if (!value.found) field.state |= state::kEof;
  if (!value.found || value.IsEmpty()) field.state |= state::kNull | state::kValueIsNull;
  // A sum over nothing is no amount that a letter could state.
  if (!value.found) return;
  field.text = value.text;
  field.raw_value = value.raw;
}

class ContextBuilder {
 public:
  ContextBuilder(const LetterSubject& subject, const std::vector<LetterField>& fields,
                 const AddressVerdict& verdict, bool with_values)
      : subject_(subject), fields_(fields), verdict_(verdict), with_values_(with_values) {
    root_.name = "XML_CONTEXT";
    root_.address = with_values ? verdict.flags : 0;
  }

  ContextField Build() && {
    AddInputs();
    AddIfAbsent("CUSTOMER_NAME", "Customer's name", "customer.name");
    AddIfAbsent("CUSTOMER_ADDR", "Customer's address", kAddressSource);
    for (const auto& definition : fields_) {
      if (definition.kind != FieldKind::kColumn && !IsInput(definition.name)) AddField(definition);
    }
    root_.SummariseErrors();
    return std::move(root_);
  }

 private:
  bool IsInput(std::string_view name) const {
    return std::ranges::find(inputs_, name, &ContextField::name) != inputs_.end();
  }

  void AddInputs() {
    AddInput("CUST_ID", "Customer's number", subject_.customer.id, subject_.customer_was_given);
    if (subject_.form) {
      AddInput("FORM_NBR", "Form number", subject_.form->number, true);
      AddInput("FORM_TYP_CD", "Form type", subject_.form->type, true);
    }
    root_.children = inputs_;
  }

  /// What was asked for is an input; a customer found through a form only stands in its place. The letter's
  /// own field of that name, if it has one, gives the description.
  void AddInput(const std::string& name, const std::string& description, const std::string& value,
                bool given) {
    const auto own = std::ranges::find(fields_, name, &LetterField::name);
    inputs_.push_back({.name = name,
                       .description = own == fields_.end() ? description : own->description,
                       .state = state::kSystem | (given ? state::kInput : 0),
                       .text = value,
                       .raw_value = value,
                       .children = {}});
  }

  void AddIfAbsent(std::string name, std::string description, std::string_view source) {
    if (std::ranges::find(fields_, name, &LetterField::name) != fields_.end()) return;
    AddField({.name = std::move(name),
              .parent = "",
              .description = std::move(description),
              .kind = FieldKind::kData,
              .source = std::string(source),
              .required = true});
  }

  void AddField(const LetterField& definition) {
    ContextField field{.name = definition.name,
                       .description = definition.description,
                       .state = KindState(definition.kind),
                       .text = "",
                       .raw_value = "",
                       .children = {}};
    root_.state |= field.state & (state::kUser | state::kParagraph);
    if (with_values_ && definition.kind == FieldKind::kTable) FillTable(field, definition);
    if (with_values_ && (definition.kind == FieldKind::kSystem || definition.kind == FieldKind::kData)) {
      SetValue(field, FindFieldSource(definition.source)->Find(subject_), definition.required);
      if (definition.source == kAddressSource) JudgeAddress(field);
    }
    root_.children.push_back(std::move(field));
  }

  /// An address that cannot be used is one error, whatever else is wrong with it.
  void JudgeAddress(ContextField& field) const {
    field.state |= state::kAddressRelated | state::kMultiColumns;
    field.address = verdict_.flags;
    field.error = verdict_.IsUsable() ? 0 : error::kAddress;
  }

  void FillTable(ContextField& table, const LetterField& definition) const {
    for (const auto& period : subject_.periods) {
      ContextField row{.name = "ROW",
                       .description = "",
                       .state = state::kTableRow,
                       .text = "",
                       .raw_value = "",
                       .children = {}};
      for (const auto& column : fields_) {
        if (column.kind == FieldKind::kColumn && column.parent == definition.name)
          AddCell(row, column, period);
      }
      table.children.push_back(std::move(row));
    }
    if (!table.children.empty()) return;
    table.state |= state::kEof;
    if (definition.required) table.error = error::kNoRow;
  }

  static void AddCell(ContextField& row, const LetterField& column, const TaxPeriod& period) {
    ContextField cell{.name = column.name,
                      .description = column.description,
                      .state = KindState(column.kind),
                      .text = "",
                      .raw_value = "",
                      .children = {}};
    SetValue(cell, FindPeriodSource(column.source)->Find(period), column.required);
    row.children.push_back(std::move(cell));
  }

  const LetterSubject& subject_;
  const std::vector<LetterField>& fields_;
  const AddressVerdict& verdict_;
  const bool with_values_;
  ContextField root_;
  std::vector<ContextField> inputs_;
};

}  // namespace

ContextField BuildLetterContext(const LetterSubject& subject, const std::vector<LetterField>& fields,
                                const AddressVerdict& verdict, bool with_values) {
  return ContextBuilder(subject, fields, verdict, with_values).Build();
}

}  // namespace server
