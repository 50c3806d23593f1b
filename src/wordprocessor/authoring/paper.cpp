#include "wordprocessor/authoring/paper.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/document/sections.h"
#include "wordprocessor/docx/tree_reader.h"

namespace wordprocessor {
namespace {

struct NamedSize {
  std::string_view name;
  PageSize size;
};

constexpr auto kNamedSizes = std::to_array<NamedSize>({
    {"Letter", {12240, 15840}},
    {"Legal", {12240, 20160}},
    {"A4", {11906, 16838}},
    {"A5", {8391, 11906}},
});

constexpr double kTwentiethsInAnInch = 1440;
// Programs round millimetres; no two papers are as near.
constexpr long kRounding = 20;

bool AreTheSame(const PageSize& one, const PageSize& other) {
  return std::labs(one.width - other.width) <= kRounding && std::labs(one.height - other.height) <= kRounding;
}

std::string NameOf(const PageSize& size) {
  const auto upright = size.IsAcross() ? size.Turned() : size;
  for (const auto& named : kNamedSizes) {
    if (AreTheSame(named.size, upright)) return std::string(named.name);
  }
  std::array<char, 64> text = {};
  std::snprintf(text.data(), text.size(), "%.1f by %.1f inches",
                static_cast<double>(upright.width) / kTwentiethsInAnInch,
                static_cast<double>(upright.height) / kTwentiethsInAnInch);
  return text.data();
}

std::vector<PageSize> SizesOf(const DocxDocument& document) {
  const auto& package = document.Source();
  const auto xml = LoadPartXml(package.Read(FindMainPart(package)));
  std::vector<PageSize> sizes;
  for (const auto& section : SectionsOf(xml)) sizes.push_back(PageSizeOf(section));
  return sizes;
}

std::string WhatBecomesOf(const PageSize& before, const PageSize& after, const std::string& letterhead) {
  const auto own = NameOf(before);
  if (after != before) {
    return "The pages are " + own + ", and the letter's become " + NameOf(after) +
           ", the letterhead's size: set it in the word processor, "
           "too, so that lines and pages end where you see them.";
  }
  const auto sorry = ", but the letterhead and the other letters are " + letterhead + ": ";
  if (before.IsAcross()) return "Pages across are " + own + sorry + "set them to that size, across.";
  return "The pages are " + own + " and stay so, because the letter has a page header of its own" + sorry +
         "set that size in the word processor.";
}

}  // namespace

std::vector<TemplateFinding> CheckPaper(const DocxDocument& letter, const DocxDocument& letterhead) {
  const auto wanted = SizesOf(letterhead);
  if (wanted.empty() || wanted.back().width == 0) return {};
  auto attached = letter;
  attached.AttachTemplate(letterhead);
  const auto before = SizesOf(letter);
  const auto after = SizesOf(attached);
  std::vector<TemplateFinding> findings;
  for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
    const auto& size = before[i];
    if (size.width == 0 || AreTheSame(size, wanted.back()) || AreTheSame(size.Turned(), wanted.back()))
      continue;
    const auto text = WhatBecomesOf(size, after[i], NameOf(wanted.back()));
    const bool told = !findings.empty() && findings.back().text == text;
    if (!told) findings.push_back({TemplateFinding::Grade::kWarning, "", text, {}, "document"});
  }
  return findings;
}

}  // namespace wordprocessor
