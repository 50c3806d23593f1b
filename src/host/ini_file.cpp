#include "host/ini_file.h"

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string_view>

#include "platform/failure.h"
#include "platform/file_failure.h"
#include "platform/text.h"

namespace host {
namespace {

using platform::Failure;

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string AllOf(const std::filesystem::path& file) {
  if (std::filesystem::is_directory(file)) throw platform::FileFailure("could not be read", file, EISDIR);
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  if (stream) text << stream.rdbuf();
  if (!stream) throw platform::FileFailure("could not be read", file, errno);
  return text.str();
}

/// The text without the mark that some editors put before it.
std::string_view WithoutMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  return text;
}

bool IsUtf16(std::string_view text) {
  return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
         text.find('\0') != std::string_view::npos;
}

void RequireUtf8(const std::filesystem::path& file, std::size_t line, std::string_view text) {
  if (platform::IsValidUtf8(text)) return;
  throw Failure(Failure::Kind::kDamaged, "\"" + file.string() + "\", line " + std::to_string(line) +
                                             ", is not written in UTF-8. Save the file as UTF-8.");
}

std::string Value(std::string_view text) {
  text = Trim(text);
  if (text.starts_with('"')) {
    const auto end = text.find('"', 1);
    if (end != std::string_view::npos) return std::string(text.substr(1, end - 1));
  }
  for (const std::string_view comment : {" ;", "\t;"}) text = text.substr(0, text.find(comment));
  return std::string(text.starts_with(';') ? "" : Trim(text));
}

}  // namespace

IniFile IniFile::Read(const std::filesystem::path& file) {
  const auto text = AllOf(file);
  if (IsUtf16(text)) {
    throw Failure(Failure::Kind::kDamaged,
                  "\"" + file.string() + "\" is written in UTF-16. Save it as UTF-8.");
  }
  IniFile ini;
  std::string section;
  std::istringstream lines{std::string(WithoutMark(text))};
  std::string line;
  for (std::size_t number = 1; std::getline(lines, line); ++number) {
    RequireUtf8(file, number, line);
    const auto content = Trim(line);
    if (content.empty() || content.front() == ';' || content.front() == '#') continue;
    const auto equals = content.find('=');
    if (content.front() == '[' && content.back() == ']') {
      section = Trim(content.substr(1, content.size() - 2));
    } else if (equals != std::string_view::npos) {
      ini.entries.push_back({.section = section,
                             .key = std::string(Trim(content.substr(0, equals))),
                             .value = Value(content.substr(equals + 1)),
                             .line = number});
    } else {
      ini.bad_lines.push_back({.line = number, .text = std::string(content)});
    }
  }
  return ini;
}

}  // namespace host
