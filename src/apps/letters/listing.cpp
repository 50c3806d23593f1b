#include "apps/letters/listing.h"

#include <QJsonObject>
#include <algorithm>
#include <iostream>

#include "apps/letters/command_line.h"
#include "apps/letters/harmless_text.h"
#include "platform/text.h"

namespace apps {
namespace {

std::vector<std::size_t> Widths(const Listing& listing) {
  std::vector<std::size_t> widths;
  for (const auto& column : listing.columns) widths.push_back(platform::CharacterCount(column.heading));
  for (const auto& row : listing.rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], platform::CharacterCount(row[column]));
    }
  }
  return widths;
}

void PrintRow(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
  for (std::size_t column = 0; column < row.size(); ++column) {
    std::cout << row[column];
    if (column + 1 == row.size()) break;
    std::cout << std::string(widths[column] - platform::CharacterCount(row[column]) + 2, ' ');
  }
  std::cout << '\n';
}

}  // namespace

QJsonArray AsJson(const Listing& listing) {
  QJsonArray list;
  for (const auto& row : listing.rows) {
    QJsonObject object;
    for (std::size_t column = 0; column < row.size(); ++column) {
      object.insert(QLatin1String(listing.columns[column].key), QString::fromStdString(row[column]));
    }
    list.append(object);
  }
  return list;
}

void Print(const Listing& listing, bool as_json) {
  if (as_json) return PrintJson(QJsonDocument(AsJson(listing)));
  auto harmless = listing;
  for (auto& row : harmless.rows) std::ranges::transform(row, row.begin(), HarmlessCell);
  const auto widths = Widths(harmless);
  std::vector<std::string> headings;
  for (const auto& column : listing.columns) headings.emplace_back(column.heading);
  PrintRow(headings, widths);
  for (const auto& row : harmless.rows) PrintRow(row, widths);
}

}  // namespace apps
