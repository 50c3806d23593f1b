#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/record_set.h"

namespace server {

// What a customer is found by, and what a text looks for. Both are words as platform::FoldForSearch makes
// them, of letters and digits only, with "&" read as "and".

/// What one customer is found by.
struct CustomerKeywords {
  /// Words with a blank between them, each once: of the names, cities and zips, the numbers (customer,
  /// account, telephone, driver licence, registration), and some words again behind one of the marks below.
  std::string text;
  /// Customers are listed in its order: a business by its name, a person by last and first name.
  std::string sort_name;
};

/// The columns of a customer that its keywords are made of. The database's notes of changed customers go by
/// them (customer_index.h): another one takes a step of the schema.
std::vector<std::string_view> SearchedColumns();

/// Before a whole number: it is found exactly.
inline constexpr char kWholeNumberMark = '=';
/// Before the first word of a name.
inline constexpr char kNameStartMark = '^';

/// `customers` has the columns of the table; numbers that it has no column for are left out.
CustomerKeywords KeywordsOf(const platform::RecordSet& customers, std::size_t row);

/// What a text looks for: customers that meet every part of it.
struct CustomerQuery {
  using Words = std::vector<std::string>;
  /// Ways to read a part; it is met where all words of one way begin words of the customer. Groups of digits
  /// are read together and apart: "555 011 4201" is a telephone number, "100004 89214" a customer and a zip.
  using Part = std::vector<Words>;

  std::vector<Part> parts;
  Words numbers;           ///< who has one of them, whole, comes first
  std::string first_word;  ///< next come those with a name that begins with it
};

/// Nothing for a text without words, and for one with more words than a customer has: nobody is found by it.
std::optional<CustomerQuery> ReadCustomerQuery(std::string_view text);

}  // namespace server
