#include "wordprocessor/office/protocol.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <vector>

#include "wordprocessor/office/percent_escape.h"

namespace wordprocessor {
namespace {

bool NeedsEscape(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F || c == '%';
}

std::string AsField(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (NeedsEscape(c)) {
      AppendEscaped(escaped, c);
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::optional<std::string> TextOfField(std::string_view field) {
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] != '%') {
      text += field[i];
      continue;
    }
    if (i + 2 >= field.size()) return std::nullopt;
    const auto high = kHexDigits.find(field[i + 1]);
    const auto low = kHexDigits.find(field[i + 2]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    text += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return text;
}

std::optional<std::uint64_t> Number(std::string_view field) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
  if (error != std::errc{} || end != field.data() + field.size()) return std::nullopt;
  return number;
}

std::vector<std::string_view> Fields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (;;) {
    const auto tab = line.find('\t');
    fields.push_back(line.substr(0, tab));
    if (tab == std::string_view::npos) return fields;
    line.remove_prefix(tab + 1);
  }
}

struct ReportForm {
  LayoutReport::Kind kind;
  std::string_view word;
  bool numbers;
  bool why;
};

constexpr auto kReportForms = std::to_array<ReportForm>({
    {LayoutReport::Kind::kReady, "ready", false, false},
    {LayoutReport::Kind::kBroken, "broken", false, true},
    {LayoutReport::Kind::kDone, "done", true, false},
    {LayoutReport::Kind::kFailed, "failed", true, true},
    {LayoutReport::Kind::kSpent, "spent", false, false},
});

std::optional<LayoutReport> ReadReport(const ReportForm& form, const std::vector<std::string_view>& fields) {
  const std::size_t expected = 1 + (form.numbers ? 2U : 0U) + (form.why ? 1U : 0U);
  if (fields.size() != expected) return std::nullopt;
  LayoutReport report{.kind = form.kind};
  if (form.numbers) {
    const auto id = Number(fields[1]);
    const auto resident = Number(fields[2]);
    if (!id || !resident) return std::nullopt;
    report.id = *id;
    report.resident_kib = *resident;
  }
  if (form.why) {
    auto why = TextOfField(fields.back());
    if (!why) return std::nullopt;
    report.why = std::move(*why);
  }
  return report;
}

}  // namespace

std::string LineOf(const LayoutOrder& order) {
  return "layout\t" + std::to_string(order.id) + "\t" + AsField(order.document) + "\t" + AsField(order.pdf) +
         "\n";
}

std::optional<LayoutOrder> ParseOrder(std::string_view line) {
  const auto fields = Fields(line);
  if (fields.size() != 4 || fields[0] != "layout") return std::nullopt;
  const auto id = Number(fields[1]);
  auto document = TextOfField(fields[2]);
  auto pdf = TextOfField(fields[3]);
  if (!id || !document || !pdf) return std::nullopt;
  return LayoutOrder{*id, std::move(*document), std::move(*pdf)};
}

std::string LineOf(const LayoutReport& report) {
  std::string line;
  for (const auto& form : kReportForms) {
    if (form.kind != report.kind) continue;
    line = form.word;
    if (form.numbers) line += "\t" + std::to_string(report.id) + "\t" + std::to_string(report.resident_kib);
    if (form.why) line += "\t" + AsField(report.why);
  }
  return line + "\n";
}

std::optional<LayoutReport> ParseReport(std::string_view line) {
  const auto fields = Fields(line);
  for (const auto& form : kReportForms) {
    if (fields[0] == form.word) return ReadReport(form, fields);
  }
  return std::nullopt;
}

bool LineReader::Fill() {
  std::array<char, 4096> piece;
  ssize_t count = 0;
  do {
    count = read(descriptor_, piece.data(), piece.size());
  } while (count < 0 && errno == EINTR);
  if (count <= 0) return false;
  arrived_.append(piece.data(), static_cast<std::size_t>(count));
  return arrived_.size() - (arrived_.rfind('\n') + 1) <= kLongestLine;
}

std::optional<std::string> LineReader::TakeLine() {
  const auto end = arrived_.find('\n');
  if (end == std::string::npos) return std::nullopt;
  auto line = arrived_.substr(0, end);
  arrived_.erase(0, end + 1);
  return line;
}

bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const auto count = write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace wordprocessor
