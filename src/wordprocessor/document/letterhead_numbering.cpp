#include "wordprocessor/document/letterhead_numbering.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "wordprocessor/docx/relations.h"

namespace wordprocessor {
namespace {

// What ties a list to others, to a style or to a picture of its part: nsid and tmpl would make one list of
// two.
constexpr auto kTies = std::to_array<std::string_view>(
    {"nsid", "tmpl", "styleLink", "numStyleLink", "pStyle", "lvlPicBulletId"});

pugi::xml_node Numbered(const pugi::xml_node& root, std::string_view name, std::string_view attribute,
                        const std::string& number) {
  for (const auto& child : WordChildren(root, name)) {
    if (WordAttribute(child, attribute) == number) return child;
  }
  return {};
}

std::string FreeNumber(const pugi::xml_node& root, std::string_view name, std::string_view attribute) {
  long last = 0;
  for (const auto& child : WordChildren(root, name)) {
    last = std::max(last, std::strtol(WordAttribute(child, attribute).c_str(), nullptr, 10));
  }
  return std::to_string(last + 1);
}

void DropTies(pugi::xml_node node) {
  for (auto child = node.first_child(); child;) {
    const auto next = child.next_sibling();
    if (std::ranges::find(kTies, LocalNameOf(child.name())) != kTies.end()) {
      node.remove_child(child);
    } else {
      DropTies(child);
    }
    child = next;
  }
}

}  // namespace

LetterheadNumbering::LetterheadNumbering(const pugi::xml_document& common, pugi::xml_document letter)
    : common_(common), letter_(std::move(letter)) {
  const auto root = common.document_element();
  if (letter_.document_element() || !root) return;
  auto copy = letter_.append_child(root.name());
  for (const auto& attribute : root.attributes()) copy.append_copy(attribute);
}

bool LetterheadNumbering::Renumber(pugi::xml_node part) {
  return RenumberIn(part, PartNames(part));
}

bool LetterheadNumbering::RenumberIn(pugi::xml_node node, const PartNames& names) {
  bool any = false;
  if (auto number = WordChild(node, "numId"); number && IsWordElement(node, "numPr")) {
    SetWordAttribute(number, "val", OwnNumber(WordAttribute(number, "val")), names);
    any = true;
  }
  for (const auto& child : node.children()) any = RenumberIn(child, names) || any;
  return any;
}

/// "0", no list, where there is none of that number.
std::string LetterheadNumbering::OwnNumber(const std::string& number) {
  if (const auto known = own_.find(number); known != own_.end()) return known->second;
  const auto root = common_.document_element();
  const auto list = Numbered(root, "num", "numId", number);
  const auto looks =
      Numbered(root, "abstractNum", "abstractNumId", WordAttribute(WordChild(list, "abstractNumId"), "val"));
  if (!list || !looks) return "0";
  auto target = letter_.document_element();
  const PartNames names(target);
  const auto own_looks = FreeNumber(target, "abstractNum", "abstractNumId");
  const auto own = FreeNumber(target, "num", "numId");
  // All looks stand before all lists.
  const auto first_list = WordChild(target, "num");
  auto copy = first_list ? target.insert_child_before(pugi::node_element, first_list)
                         : target.append_child(pugi::node_element);
  CopyWordElement(looks, copy, names);
  SetWordAttribute(copy, "abstractNumId", own_looks, names);
  DropTies(copy);
  const auto last_list = WordChildren(target, "num");
  auto added = last_list.empty() ? target.insert_child_after(pugi::node_element, copy)
                                 : target.insert_child_after(pugi::node_element, last_list.back());
  CopyWordElement(list, added, names);
  SetWordAttribute(added, "numId", own, names);
  SetWordAttribute(WordChild(added, "abstractNumId"), "val", own_looks, names);
  DropTies(added);
  return own_[number] = own;
}

std::optional<std::string> LetterheadNumbering::Text() const {
  return own_.empty() ? std::nullopt : std::optional(PartText(letter_));
}

}  // namespace wordprocessor
