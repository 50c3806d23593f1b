#pragma once

#include <QJsonArray>
#include <span>
#include <string>
#include <vector>

namespace apps {

/// A list for a person or a program: `keys` name the JSON members, `headings` the columns on the screen.
struct Listing {
  struct Column {
    const char* key;
    const char* heading;
  };
  std::span<const Column> columns;
  std::vector<std::vector<std::string>> rows;  ///< a text for each column
};

/// The rows as objects, for a document that holds more than the list.
QJsonArray AsJson(const Listing& listing);

/// Writes the list to standard output: aligned columns, or a JSON array of objects.
void Print(const Listing& listing, bool as_json);

}  // namespace apps
