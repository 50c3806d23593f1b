#include "wordprocessor/docx/escape.h"

#include <array>

namespace wordprocessor {
namespace {

struct Escape {
  char character;
  std::string_view entity;
};

constexpr auto kEscapes = std::to_array<Escape>({
    {'&', "&amp;"},
    {'<', "&lt;"},
    {'>', "&gt;"},
    {'\r', "&#13;"},
    {'"', "&quot;"},
    {'\n', "&#10;"},
    {'\t', "&#9;"},
});

std::string_view EntityOf(char character, bool quotes) {
  for (const auto& escape : kEscapes) {
    if (escape.character == character) {
      return quotes || character == '&' || character == '<' || character == '>' || character == '\r'
                 ? escape.entity
                 : std::string_view{};
    }
  }
  return {};
}

}  // namespace

void AppendEscaped(std::string& out, std::string_view text, bool quotes) {
  std::size_t copied = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (static_cast<unsigned char>(text[i]) > '>') continue;
    const auto entity = EntityOf(text[i], quotes);
    if (entity.empty()) continue;
    out.append(text, copied, i - copied);
    out += entity;
    copied = i + 1;
  }
  out.append(text, copied);
}

std::string Unescaped(std::string_view markup) {
  std::string text;
  text.reserve(markup.size());
  for (std::size_t i = 0; i < markup.size();) {
    std::string_view entity;
    if (markup[i] == '&') {
      for (const auto& escape : kEscapes) {
        if (!markup.substr(i).starts_with(escape.entity)) continue;
        text += escape.character;
        entity = escape.entity;
      }
    }
    if (entity.empty()) text += markup[i];
    i += entity.empty() ? 1 : entity.size();
  }
  return text;
}

}  // namespace wordprocessor
