#include "workspace/letters/proposed_file_name.h"

#include <algorithm>
#include <string_view>

#include "platform/text.h"
#include "platform/xml/xml.h"

namespace workspace {

namespace {

// Every file system that an office may save to takes a name of this many bytes with its ending.
constexpr std::size_t kMostBytes = 180;
constexpr std::string_view kBetween = " - ";

/// The customer as the letter addresses it; "" where the context does not say.
std::string CustomerName(const std::string& context) {
  const auto parsed = platform::XmlDocument::Parse(context);
  if (!parsed.document) return "";
  const auto name = parsed.document->FirstByTagName("CUSTOMER_NAME");
  return name ? name.Text() : "";
}

/// A part of a name that every file system takes: some know no more than this program's own.
std::string FilePart(const std::string& text) {
  constexpr std::string_view kForbidden = "/\\:*?\"<>|";
  auto part = platform::OnOneLine(platform::TrimBlanks(text));
  std::ranges::replace_if(
      part,
      [&](char c) {
        return kForbidden.find(c) != std::string_view::npos || (c >= 0 && c < ' ') || c == '\x7F';
      },
      '-');
  return std::string(platform::TrimBlanks(part));
}

std::string DayOf(const LetterData& letter, platform::Date today) {
  constexpr auto kDayLength = std::string_view("yyyy-mm-dd").size();
  const std::string printed_on(platform::FirstCharacters(letter.first_printed, kDayLength));
  return platform::ParseDate(printed_on) ? printed_on : platform::DateText(today);
}

std::string_view Shortened(std::string_view text, std::size_t most_bytes) {
  auto count = platform::CharacterCount(text);
  while (text.size() > most_bytes) text = platform::FirstCharacters(text, --count);
  return text;
}

}  // namespace

std::string ProposedFileName(const LetterData& letter, platform::Date today) {
  if (platform::IsBlank(letter.letter_name)) return "";
  const auto day = std::string(kBetween) + DayOf(letter, today);
  auto name = FilePart(letter.letter_name);
  const auto customer = FilePart(CustomerName(letter.context));
  if (!customer.empty()) name += std::string(kBetween) + customer;
  return std::string(platform::TrimBlanks(Shortened(name, kMostBytes - day.size()))) + day;
}

}  // namespace workspace
