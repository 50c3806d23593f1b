#include "wordprocessor/bookmarks/data_context.h"

#include <algorithm>

#include "platform/agreed/field_attributes.h"
#include "platform/agreed/field_flags.h"
#include "platform/agreed/field_names.h"
#include "platform/failure.h"
#include "platform/xml/xml.h"

namespace wordprocessor {
namespace {

using platform::XmlElement;

namespace field_state = platform::field_state;

platform::FlagWord StateOf(const XmlElement& element) {
  return platform::ReadFlagWord(element, platform::field_attribute::kState);
}

bool IsTable(const XmlElement& element, const std::vector<XmlElement>& children) {
  if ((StateOf(element) & field_state::kTable) != 0) return true;
  return std::ranges::any_of(children, [](const XmlElement& child) {
    return (StateOf(child) & field_state::kTableRow) != 0 || !child.Children().empty();
  });
}

void ReadFields(const std::vector<XmlElement>& elements, DataRow& into);

std::vector<DataRow> ReadRows(const std::vector<XmlElement>& elements) {
  std::vector<DataRow> rows;
  rows.reserve(elements.size());
  for (const auto& element : elements) ReadFields(element.Children(), rows.emplace_back());
  return rows;
}

/// A bookmark around a whole block shows its parts one below the other.
std::string LinesOf(const std::vector<XmlElement>& parts) {
  std::string lines;
  for (const auto& part : parts) {
    const auto text = part.Text();
    if (text.empty()) continue;
    if (!lines.empty()) lines += '\n';
    lines += text;
  }
  return lines;
}

/// What a table field shows where no table row can be repeated for it: a line a row, tabs between columns.
std::string TableText(const std::vector<XmlElement>& rows) {
  std::string text;
  for (const auto& row : rows) {
    if (!text.empty()) text += '\n';
    std::string_view gap;
    for (const auto& column : row.Children()) {
      text.append(gap).append(column.Text());
      gap = "\t";
    }
  }
  return text;
}

void ReadFields(const std::vector<XmlElement>& elements, DataRow& into) {
  for (const auto& element : elements) {
    const auto children = element.Children();
    DataField field;
    field.table = IsTable(element, children);
    if (field.table) field.rows = ReadRows(children);
    field.text = field.table ? TableText(children) : children.empty() ? element.Text() : LinesOf(children);
    const bool block = !field.table && !children.empty();
    into.columns.try_emplace(element.Name(), std::move(field));
    if (block) ReadFields(children, into);
  }
}

}  // namespace

const DataField* DataRow::Find(std::string_view name) const {
  auto found = columns.find(std::string(name));
  if (found == columns.end()) {
    const auto repeated = platform::RepeatedName(name);
    if (!repeated.empty()) found = columns.find(std::string(repeated));
  }
  return found == columns.end() ? nullptr : &found->second;
}

DataContext DataContext::Parse(std::string_view xml) {
  const auto document = platform::While("reading the data context of the letter",
                                        [&] { return platform::XmlDocument::Parse(xml).OrFail(); });
  DataContext context;
  ReadFields(document.Root().Children(), context.fields_);
  return context;
}

}  // namespace wordprocessor
