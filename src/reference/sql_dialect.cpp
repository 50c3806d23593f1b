#include "reference/sql_dialect.h"

#include <array>
#include <optional>

#include "platform/failure.h"
#include "platform/text.h"

namespace reference {
namespace {

using platform::Failure;
using platform::Quoted;

constexpr std::string_view kWordCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
constexpr std::string_view kBlanks = " \t\r\n";

struct Quote {
  char open;
  char close;
};

// Texts, and the three ways of quoting a name. A doubled closing sign inside simply opens the next stretch.
constexpr auto kQuotes = std::to_array<Quote>({{'\'', '\''}, {'"', '"'}, {'`', '`'}, {'[', ']'}});

[[noreturn]] void Refuse(const std::string& reason) {
  throw Failure(Failure::Kind::kRefused, reason);
}

/// Walks one statement from its start to its end.
class Translation {
 public:
  Translation(std::string_view statement, platform::Date today)
      : rest_(statement), today_text_("'" + platform::DateText(today) + "'") {}

  std::string Run() {
    while (!rest_.empty()) {
      if (const auto close = ClosingQuote(rest_.front())) {
        CopyQuoted(*close);
      } else if (rest_.front() == '#') {
        TranslateDate();
      } else if (kWordCharacters.find(rest_.front()) != std::string_view::npos) {
        TranslateWord();
      } else {
        Copy(1);
      }
    }
    return std::move(translated_);
  }

 private:
  static std::optional<char> ClosingQuote(char open) {
    for (const auto& quote : kQuotes) {
      if (quote.open == open) return quote.close;
    }
    return std::nullopt;
  }

  void CopyQuoted(char close) {
    const auto end = rest_.find(close, 1);
    if (end == std::string_view::npos)
      Refuse("The text or name that starts at " + Quoted(rest_) + " is not closed.");
    Copy(end + 1);
  }

  void TranslateDate() {
    const auto end = rest_.find('#', 1);
    if (end == std::string_view::npos) {
      Refuse("The date that starts at " + Quoted(rest_) + " is not closed; write it as #yyyy-mm-dd#.");
    }
    const auto literal = rest_.substr(0, end + 1);
    const auto day = platform::ParseDate(rest_.substr(1, end - 1));
    if (!day) Refuse(Quoted(literal) + " is no date; write it as #yyyy-mm-dd#.");
    translated_ += "'" + platform::DateText(*day) + "'";
    rest_.remove_prefix(literal.size());
  }

  void TranslateWord() {
    const auto word = rest_.substr(0, rest_.find_first_not_of(kWordCharacters));
    const auto arguments = platform::EqualsIgnoringCase(word, "date") ? EmptyArguments(word.size()) : 0;
    if (arguments == 0) return Copy(word.size());
    translated_ += today_text_;
    rest_.remove_prefix(word.size() + arguments);
  }

  /// The length of "()" with its blanks, from `start` on; 0 where something else stands there.
  std::size_t EmptyArguments(std::size_t start) const {
    const auto open = rest_.find_first_not_of(kBlanks, start);
    if (open == std::string_view::npos || rest_[open] != '(') return 0;
    const auto close = rest_.find_first_not_of(kBlanks, open + 1);
    if (close == std::string_view::npos || rest_[close] != ')') return 0;
    return close + 1 - start;
  }

  void Copy(std::size_t count) {
    translated_ += rest_.substr(0, count);
    rest_.remove_prefix(count);
  }

  std::string_view rest_;
  const std::string today_text_;
  std::string translated_;
};

bool IsSelect(std::string_view statement) {
  const auto start = statement.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return false;
  statement.remove_prefix(start);
  return platform::EqualsIgnoringCase(statement.substr(0, statement.find_first_not_of(kWordCharacters)),
                                      "select");
}

}  // namespace

std::string TranslateStatement(std::string_view statement, platform::Date today) {
  if (!IsSelect(statement)) {
    Refuse("The reference database is read only: " + Quoted(statement) + " is no SELECT.");
  }
  return Translation(statement, today).Run();
}

std::string SqlQuoted(std::string_view text) {
  return "'" + platform::ReplaceAll(text, "'", "''") + "'";
}

}  // namespace reference
