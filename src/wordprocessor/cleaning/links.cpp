#include "wordprocessor/cleaning/links.h"

#include <string_view>
#include <vector>

#include "platform/text.h"
#include "wordprocessor/cleaning/fields.h"
#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

bool LeadsOut(const DocxTree& tree, NodeId hyperlink) {
  return !tree.References(hyperlink).empty();
}

/// `HYPERLINK "https://..."`; what begins with a switch leads to a place of the document.
bool LeadsOut(const DocxField& field) {
  const auto words = WordsOfCode(field.code);
  return words.size() > 1 && platform::UpperCase(words[0].text) == "HYPERLINK" && !words[1].is_switch;
}

void AddRuns(const DocxTree& tree, NodeId node, std::vector<NodeId>& runs) {
  if (tree[node].kind == DocxKind::kRun) runs.push_back(node);
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    AddRuns(tree, child, runs);
  }
}

std::vector<NodeId> RunsOfLinks(const DocxTree& tree) {
  std::vector<NodeId> runs;
  for (NodeId node = 0; node < tree.size(); ++node) {
    const bool link = tree[node].kind == DocxKind::kHyperlink && tree.IsAttached(node);
    if (link && LeadsOut(tree, node)) AddRuns(tree, node, runs);
  }
  for (const auto& field : FindFields(tree)) {
    if (!LeadsOut(field)) continue;
    for (const auto piece : field.result_pieces) runs.push_back(tree[piece].parent);
  }
  return runs;
}

/// The prefix of this part's attributes; "" where its elements have none, which no program writes.
std::string PrefixAt(const DocxTree& tree, NodeId node) {
  const auto name = tree[node].name();
  return std::string(name.substr(0, name.find(':') + 1));  // npos + 1 is 0
}

}  // namespace

LinkStyle::LinkStyle(const DocxPackage& package, const std::string& main_part) : id_("LetterLink") {
  const auto document = LoadRelated(package, ReadRelations(package, main_part), "styles");
  has_styles_ = static_cast<bool>(document.document_element());
  std::set<std::string> others;
  for (const auto& style : WordChildren(document.document_element(), "style")) {
    const bool of_characters = WordAttribute(style, "type") == "character";
    (of_characters ? known_ : others).insert(WordAttribute(style, "styleId"));
  }
  while (known_.contains(id_) || others.contains(id_)) id_ += "x";
}

bool LinkStyle::GiveTo(DocxTree& tree) {
  bool any = false;
  if (!has_styles_ || PrefixAt(tree, tree.root()).empty()) return false;
  for (const auto run : RunsOfLinks(tree)) any = GiveToRun(tree, run) || any;
  given_ = given_ || any;
  return any;
}

bool LinkStyle::GiveToRun(DocxTree& tree, NodeId run) {
  auto properties = tree.ChildOfKind(run, DocxKind::kRunProperties);
  if (properties == kNoNode) {
    properties = tree.AddElement(DocxKind::kRunProperties, "rPr", run);
    const auto first = tree[run].first_child;
    first == kNoNode ? tree.Append(properties, run) : tree.InsertBefore(properties, first);
  }
  const auto named = PropertyOf(tree, properties, "rStyle");
  if (named != kNoNode) {
    if (known_.contains(StyleNamed(tree, properties, "rStyle"))) return false;
    tree.SetAttribute(named, "val", id_);
    known_.insert(id_);
    return true;
  }
  const auto first = tree[properties].first_child;
  const auto style =
      tree.AddElement(DocxKind::kOther, "rStyle", run, " " + PrefixAt(tree, run) + "val=\"" + id_ + "\"");
  first == kNoNode ? tree.Append(style, properties) : tree.InsertBefore(style, first);
  known_.insert(id_);
  return true;
}

bool LinkStyle::AddTo(pugi::xml_node styles) const {
  if (!given_) return false;
  const PartNames names(styles);
  auto style = styles.append_child(names.Element("style").c_str());
  SetWordAttribute(style, "type", "character", names);
  SetWordAttribute(style, "customStyle", "1", names);
  SetWordAttribute(style, "styleId", id_, names);
  SetWordAttribute(style.append_child(names.Element("name").c_str()), "val", id_, names);
  return true;
}

}  // namespace wordprocessor
