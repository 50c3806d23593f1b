#include "postal/comma_table.h"

#include <algorithm>

#include "platform/text.h"

namespace postal {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Behind a line end at `at`, or `at` where there is none.
std::size_t BehindLineEnd(std::string_view text, std::size_t at) {
  if (text.substr(at).starts_with("\r\n")) return at + 2;
  return at < text.size() && (text[at] == '\n' || text[at] == '\r') ? at + 1 : at;
}

}  // namespace

CommaTableReader::CommaTableReader(std::string_view text)
    : text_(text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text) {}

std::optional<CommaTableReader::Record> CommaTableReader::Next() {
  while (at_ < text_.size() && BehindLineEnd(text_, at_) != at_) {
    at_ = BehindLineEnd(text_, at_);
    ++line_;
  }
  if (at_ >= text_.size()) return std::nullopt;
  Record record{.line = line_};
  auto end = at_;
  record.fault = ReadFields(record.fields, end);
  if (!record.fault.empty()) end = std::min(text_.find('\n', at_), text_.size());
  const auto whole = text_.substr(at_, end - at_);
  if (record.fault.empty() && !platform::IsValidUtf8(whole)) record.fault = "is not written in UTF-8";
  line_ += static_cast<std::size_t>(std::ranges::count(whole, '\n'));
  const auto behind = BehindLineEnd(text_, end);
  if (behind != end) ++line_;
  at_ = behind;
  return record;
}

std::string CommaTableReader::ReadFields(std::vector<std::string>& fields, std::size_t& at) {
  for (;;) {
    auto& field = fields.emplace_back();
    if (at < text_.size() && text_[at] == '"') {
      if (!ReadQuoted(field, at)) return "has a quotation mark that is not closed";
      if (at < text_.size() && text_[at] != ',' && BehindLineEnd(text_, at) == at)
        return "has text behind a closing quotation mark";
    } else {
      const auto end = std::min(text_.find_first_of(",\r\n", at), text_.size());
      field = text_.substr(at, end - at);
      if (field.find('"') != std::string::npos)
        return "has a quotation mark inside a field that is not quoted";
      at = end;
    }
    if (at >= text_.size() || text_[at] != ',') return "";
    ++at;
  }
}

bool CommaTableReader::ReadQuoted(std::string& field, std::size_t& at) {
  ++at;
  for (;;) {
    const auto quote = text_.find('"', at);
    if (quote == std::string_view::npos) return false;
    field += text_.substr(at, quote - at);
    at = quote + 1;
    if (at >= text_.size() || text_[at] != '"') return true;
    field += '"';
    ++at;
  }
}

std::string CommaRecord(const std::vector<std::string>& fields) {
  std::string record;
  for (std::size_t place = 0; place < fields.size(); ++place) {
    if (place > 0) record += ',';
    const auto& field = fields[place];
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
      record += field;
    } else {
      record += "\"" + platform::ReplaceAll(field, "\"", "\"\"") + "\"";
    }
  }
  return record + "\n";
}

}  // namespace postal
