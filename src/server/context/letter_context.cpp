#include "server/context/letter_context.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "platform/failure.h"
#include "platform/text.h"
#include "server/context/field_functions.h"
#include "server/context/field_sources.h"

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
    case FieldKind::kQuery:
      return state::kCanDisplay;
    case FieldKind::kFunction:
      return state::kCanDisplay | state::kHasFunction;
    case FieldKind::kLocal:
      return state::kLocal | state::kNotFromData;
  }
  return 0;
}

FlagWord RuleState(FieldRules rules) {
  FlagWord state = 0;
  if ((rules & rule::kIndirect) != 0) state |= state::kIndirect;
  if ((rules & rule::kReferenceOptional) != 0) state |= state::kReferenceOptional;
  return state;
}

FlagWord WhatIsMissing(const FieldValue& value) {
  if (!value.found) return error::kNoRow;
  if (value.is_null) return error::kNull;
  if (value.IsEmpty()) return error::kEmpty;
  return value.is_zero ? error::kZero : 0;
}

ContextField NewField(const LetterField& definition) {
  return {.name = definition.name,
          .description = definition.description,
          .state = KindState(definition.kind) | RuleState(definition.rules),
          .text = "",
          .raw_value = "",
          .group = definition.group,
          .children = {}};
}

/// Where whoever writes letters finds what is wrong: "Field "X" (letter_fields.tsv, line 7)" and `what`.
std::string Place(const LetterField& definition, const std::string& what) {
  auto place = "Field " + platform::Quoted(definition.name);
  if (definition.line > 0) {
    place += " (";
    place += kDefinitionFile;
    place += ", line " + std::to_string(definition.line) + ")";
  }
  return place + what + ".";
}

std::string Origin(const LetterField& definition) {
  return definition.kind == FieldKind::kQuery ? " comes from its query"
                                              : " comes from " + platform::Quoted(definition.source);
}

void SetValue(ContextField& field, const FieldValue& value, const LetterField& definition) {
  const bool has_value = value.found && !value.IsEmpty();
  if (!value.found) field.state |= state::kEof;
  if (!has_value && !definition.default_text.empty()) {
    field.state |= state::kDefaultUsed;
    field.text = definition.default_text;
    return;
  }
  const auto missing = WhatIsMissing(value);
  if (definition.required) field.error = missing;
  if (definition.ignored_without && missing != 0) field.error = error::kLetterIgnored;
  if (field.error != 0) field.error_place = Place(definition, Origin(definition));
  if (!has_value) field.state |= state::kNull | state::kValueIsNull;
  // A sum over nothing is no amount that a letter could state.
  if (!value.found) return;
  field.text = value.text;
  field.raw_value = value.raw;
}

class ContextBuilder {
 public:
  ContextBuilder(const LetterSubject& subject, const std::vector<LetterField>& fields,
                 const AddressVerdict& verdict, bool with_values, const FieldQueryRunner& run_query)
      : subject_(subject),
        fields_(fields),
        verdict_(verdict),
        with_values_(with_values),
        run_query_(run_query) {
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
    const bool known = own != fields_.end();
    inputs_.push_back({.name = name,
                       .description = known ? own->description : description,
                       .state = state::kSystem | (given ? state::kInput : 0),
                       .error = known && with_values_ ? InputError(*own) : 0,
                       .text = value,
                       .raw_value = value,
                       .children = {}});
  }

  FlagWord InputError(const LetterField& definition) const {
    const bool open = subject_.form && subject_.form->IsOpen();
    return (definition.rules & rule::kOpenDocument) != 0 && !open ? error::kInvalidInput : 0;
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
    auto field = NewField(definition);
    root_.state |= field.state & (state::kUser | state::kParagraph);
    if (with_values_) Populate(field, definition);
    root_.children.push_back(std::move(field));
  }

  void Populate(ContextField& field, const LetterField& definition) const {
    switch (definition.kind) {
      case FieldKind::kSystem:
      case FieldKind::kData: {
        const auto* source = FindFieldSource(definition.source);
        field.state |= source->state;
        SetValue(field, source->Find(subject_), definition);
        if (definition.source == kAddressSource) JudgeAddress(field);
        return;
      }
      case FieldKind::kTable:
        return FillTable(field, definition);
      case FieldKind::kQuery:
        return Settle(field,
                      run_query_ ? run_query_(definition) : FieldFinding{.error = error::kExecuteQuery},
                      definition);
      case FieldKind::kFunction:
        return Compute(field, definition);
      case FieldKind::kLocal:
        return SetValue(field, {.text = definition.source, .raw = definition.source}, definition);
      case FieldKind::kColumn:
      case FieldKind::kUser:
      case FieldKind::kParagraph:
        return;
    }
  }

  static void Settle(ContextField& field, const FieldFinding& finding, const LetterField& definition) {
    if (finding.error == 0) return SetValue(field, finding.value, definition);
    field.error = finding.error;
    if (!finding.reason.empty()) field.error_place = Place(definition, ": " + finding.reason);
    field.state |= state::kNull | state::kValueIsNull;
  }

  void Compute(ContextField& field, const LetterField& definition) const {
    const auto call = *ReadFunctionCall(definition.source);
    field.state |= call.function->state;
    const bool may_be_missing = (definition.rules & rule::kReferenceOptional) != 0;
    std::vector<FunctionArgument> arguments;
    for (const auto& name : call.fields) {
      auto value = RawValueOf(name);
      if (!value && (!may_be_missing || call.function->needs_all))
        return LeaveWithout(field, definition, name);
      arguments.push_back({name, std::move(value).value_or("")});
    }
    try {
      Settle(field, {.value = call.function->Call(arguments, subject_.today)}, definition);
    } catch (const platform::Failure& failure) {
      Settle(field, {.error = error::kExecuteFunction, .reason = failure.description()}, definition);
    }
  }

  /// A function of a field without a value has none itself; the definition says what that means.
  static void LeaveWithout(ContextField& field, const LetterField& definition, const std::string& argument) {
    if (!definition.required || !definition.default_text.empty())
      return SetValue(field, {.text = "", .raw = "", .is_null = true}, definition);
    Settle(field,
           {.error = error::kPopulateValue,
            .reason = platform::Quoted(argument) + " has no value to make it from"},
           definition);
  }

  /// Nothing for a field without a value; a default is for the letter's reader only.
  std::optional<std::string> RawValueOf(const std::string& name) const {
    const auto field = std::ranges::find(root_.children, name, &ContextField::name);
    const bool missing = field == root_.children.end() || field->error != 0 ||
                         (field->state & (state::kNull | state::kDefaultUsed)) != 0;
    return missing ? std::nullopt : std::optional(field->raw_value);
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
    if (definition.ignored_without) table.error = error::kLetterIgnored;
    if (table.error != 0) table.error_place = Place(definition, Origin(definition));
  }

  static void AddCell(ContextField& row, const LetterField& column, const TaxPeriod& period) {
    auto cell = NewField(column);
    SetValue(cell, FindPeriodSource(column.source)->Find(period), column);
    row.children.push_back(std::move(cell));
  }

  const LetterSubject& subject_;
  const std::vector<LetterField>& fields_;
  const AddressVerdict& verdict_;
  const bool with_values_;
  const FieldQueryRunner& run_query_;
  ContextField root_;
  std::vector<ContextField> inputs_;
};

}  // namespace

ContextField BuildLetterContext(const LetterSubject& subject, const std::vector<LetterField>& fields,
                                const AddressVerdict& verdict, bool with_values,
                                const FieldQueryRunner& run_query) {
  return ContextBuilder(subject, fields, verdict, with_values, run_query).Build();
}

}  // namespace server
