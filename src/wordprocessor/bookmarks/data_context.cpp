#include "wordprocessor/bookmarks/data_context.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "platform/failure.h"
#include "platform/xml/xml.h"

namespace wordprocessor {
namespace {

using platform::XmlElement;

constexpr std::uint32_t kTableBit = 0x1;
constexpr std::uint32_t kTableRowBit = 0x40;

std::uint32_t StateOf(const XmlElement& element) {
  std::uint32_t state = 0;
  const auto digits = element.Attribute("State").value_or("");
  std::from_chars(digits.data(), digits.data() + digits.size(), state, 16);
  return state;
}

bool IsTable(const XmlElement& element, const std::vector<XmlElement>& children) {
  if ((StateOf(element) & kTableBit) != 0) return true;
  return std::ranges::any_of(children, [](const XmlElement& child) {
    return (StateOf(child) & kTableRowBit) != 0 || !child.Children().empty();
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

bool IsParagraphField(std::string_view name) {
  return name.find("PARA_") != std::string_view::npos;
}

std::string_view RepeatedName(std::string_view name) {
  const auto mark = name.rfind("__");
  if (mark == std::string_view::npos || mark + 2 == name.size()) return {};
  const auto number = name.substr(mark + 2);
  const bool numeric = std::ranges::all_of(number, [](char digit) { return digit >= '0' && digit <= '9'; });
  return numeric ? name.substr(0, mark) : std::string_view{};
}

const DataField* DataRow::Find(std::string_view name) const {
  auto found = columns.find(std::string(name));
  if (found == columns.end()) {
    const auto repeated = RepeatedName(name);
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
