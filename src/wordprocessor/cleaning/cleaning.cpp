#include "wordprocessor/cleaning/cleaning.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include <pugixml.hpp>

#include "platform/failure.h"
#include "platform/text.h"
#include "wordprocessor/cleaning/links.h"
#include "wordprocessor/cleaning/outside.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

// Of a document's settings (ECMA-376, part 1, 17.15.1, and later additions): who wrote it where from what,
// how it was written, and what a word processor shall do with it that a letter never asks for.
constexpr auto kAuthorsSettings = std::to_array<std::string_view>({
    "activeWritingStyle",
    "attachedSchema",
    "attachedTemplate",
    "chartTrackingRefBased",
    "docId",
    "docVars",
    "documentProtection",
    "documentType",
    "doNotTrackFormatting",
    "doNotTrackMoves",
    "forceUpgrade",
    "linkStyles",
    "mailMerge",
    "proofState",
    "revisionView",
    "rsids",
    "saveThroughXslt",
    "schemaLibrary",
    "showXMLTags",
    "smartTagType",
    "trackRevisions",
    "updateFields",
    "useXSLTWhenSaving",
    "writeProtection",
});

constexpr auto kSaveMarks = std::to_array<std::string_view>({"rsid"});
constexpr auto kChartSources = std::to_array<std::string_view>({"externalData"});

struct CleanedKind {
  std::string_view relation;
  std::span<const std::string_view> dropped;  // elements, by local name
};

constexpr auto kCleanedKinds = std::to_array<CleanedKind>({
    {"settings", kAuthorsSettings},
    {"styles", kSaveMarks},
    {"numbering", kSaveMarks},
    {"chart", kChartSources},
    {"chartEx", kChartSources},
});

bool DropIn(pugi::xml_node element, std::span<const std::string_view> dropped) {
  bool any = false;
  for (auto attribute = element.first_attribute(); attribute;) {
    const auto next = attribute.next_attribute();
    if (LocalNameOf(attribute.name()).starts_with(kSaveMarks.front())) {
      any = element.remove_attribute(attribute) || any;
    }
    attribute = next;
  }
  for (auto child = element.first_child(); child;) {
    const auto next = child.next_sibling();
    if (std::ranges::find(dropped, LocalNameOf(child.name())) != dropped.end()) {
      any = element.remove_child(child) || any;
    } else {
      any = DropIn(child, dropped) || any;
    }
    child = next;
  }
  return any;
}

using Names = std::set<std::string>;

Names RelationsUsed(const DocxTree& tree) {
  Names ids;
  const std::function<void(NodeId)> visit = [&](NodeId node) {
    for (const auto& reference : tree.References(node)) ids.insert(Unescaped(reference.id));
    for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) visit(child);
  };
  visit(tree.root());
  return ids;
}

/// "footnote 2" for each note that the text refers to.
Names NotesUsed(const std::vector<DocxStory>& stories) {
  Names notes;
  for (const auto& story : stories) {
    const auto& tree = story.tree;
    const std::function<void(NodeId)> visit = [&](NodeId node) {
      const auto name = LocalNameOf(tree[node].name());
      if (name == "footnoteReference" || name == "endnoteReference") {
        notes.insert(std::string(name.substr(0, name.find("Reference"))) + " " +
                     std::string(tree.Attribute(node, "id")));
      }
      for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) visit(child);
    };
    visit(tree.root());
  }
  return notes;
}

Names Without(const Names& names, const Names& others) {
  Names left;
  std::ranges::set_difference(names, others, std::inserter(left, left.end()));
  return left;
}

class DocumentCleaner {
 public:
  DocumentCleaner(const DocxPackage& package, const std::string& main_part)
      : package_(package),
        main_part_(main_part),
        stories_(ReadStories(package, main_part)),
        link_style_(package, main_part) {}

  CleanedDocument Run() && {
    CleanStories();
    auto properties = ReadProperties(package_, main_part_, stories_.front().tree);
    Keep("", "");
    Keep(properties.part, "core-properties");
    written_[properties.part] = PropertiesText(properties, "");
    KeepAccount(properties.part);
    auto cleaned = DocxPackage::FromBytes(Packed(), package_.file_name());
    return {OutgoingPackage(std::move(cleaned), std::move(properties)), std::move(stories_)};
  }

 private:
  /// What text was deleted or hidden takes its notes, pictures and headers along.
  void CleanStories() {
    const HiddenStyles styles(package_, main_part_);
    const auto notes = NotesUsed(stories_);
    std::vector<bool> changed;
    for (auto& story : stories_) {
      const auto used = RelationsUsed(story.tree);
      changed.push_back(CleanStory(story, styles, ReadRelations(package_, story.part)));
      unused_[story.part] = Without(used, RelationsUsed(story.tree));
    }
    const auto gone = Without(notes, NotesUsed(stories_));
    for (std::size_t i = 0; i < stories_.size(); ++i) {
      auto& story = stories_[i];
      const bool lost_notes = DropNotes(story.tree, gone);
      const bool linked = link_style_.GiveTo(story.tree);
      if (changed[i] || lost_notes || linked) written_[story.part] = story.tree.Serialize();
    }
  }

  static bool DropNotes(DocxTree& tree, const Names& notes) {
    bool any = false;
    for (auto child = tree[tree.root()].first_child; child != kNoNode && !notes.empty();) {
      const auto next = tree[child].next;
      const auto name = std::string(LocalNameOf(tree[child].name())) + " ";
      if (tree[child].kind == DocxKind::kNote &&
          notes.contains(name + std::string(tree.Attribute(child, "id")))) {
        tree.Unlink(child);
        any = true;
      }
      child = next;
    }
    return any;
  }

  /// The part, and what it refers to; "" is the package itself.
  void Keep(const std::string& part, std::string_view relation) {
    if (!kept_.insert(platform::LowerCase(part)).second) return;
    CleanPart(part, relation);
    const auto relations = ReadRelations(package_, part);
    if (relations.empty()) return;
    Names dropped;
    for (const auto& relation_of_part : relations) {
      const bool kept = IsKept(UseOf(relation_of_part)) && !unused_[part].contains(relation_of_part.id);
      if (!kept) {
        dropped.insert(relation_of_part.id);
      } else if (LeadsToPart(relation_of_part, package_)) {
        Keep(relation_of_part.target, relation_of_part.kind);
      }
    }
    if (dropped.size() == relations.size()) return;
    const auto account = RelationsPartOf(part);
    kept_.insert(platform::LowerCase(account));
    if (!dropped.empty()) written_[account] = RelationsWithout(account, dropped);
  }

  std::string RelationsWithout(const std::string& account, const Names& dropped) const {
    auto document = LoadPartXml(package_.Read(account));
    auto root = document.document_element();
    for (auto relation = root.first_child(); relation;) {
      const auto next = relation.next_sibling();
      if (dropped.contains(relation.attribute("Id").value())) root.remove_child(relation);
      relation = next;
    }
    return PartText(document);
  }

  void CleanPart(const std::string& part, std::string_view relation) {
    const auto kind = std::ranges::find(kCleanedKinds, relation, &CleanedKind::relation);
    if (kind == kCleanedKinds.end()) return;
    auto document = platform::While("reading " + part + " of \"" + package_.file_name() + "\"",
                                    [&] { return LoadPartXml(package_.Read(part)); });
    bool changed = DropIn(document.document_element(), kind->dropped);
    if (relation == "styles") changed = link_style_.AddTo(document.document_element()) || changed;
    if (changed) written_[part] = PartText(document);
  }

  /// The lists of relations and content types say what is in the package, and that it is a letter.
  void KeepAccount(const std::string& properties_part) {
    kept_.insert(platform::LowerCase(std::string(kContentTypesPart)));
    auto types = LoadPartXml(package_.Read(kContentTypesPart));
    auto root = types.document_element();
    bool changed = false;
    bool described = false;
    for (auto type = root.first_child(); type;) {
      const auto next = type.next_sibling();
      const auto part = ResolveTarget({}, type.attribute("PartName").value());
      if (LocalNameOf(type.name()) == "Override" && !IsKeptPart(part)) {
        changed = root.remove_child(type) || changed;
      } else if (platform::EqualsIgnoringCase(part, main_part_) &&
                 type.attribute("ContentType").value() != kDocumentType) {
        changed = type.attribute("ContentType").set_value(std::string(kDocumentType).c_str()) || changed;
      }
      described = described || platform::EqualsIgnoringCase(part, properties_part);
      type = next;
    }
    if (!described) {
      AddLike(root, "Override", {{"PartName", "/" + properties_part}, {"ContentType", kPropertiesType}});
      AddPropertiesRelation(properties_part);
    }
    if (changed || !described) written_[std::string(kContentTypesPart)] = PartText(types);
  }

  void AddPropertiesRelation(const std::string& properties_part) {
    const auto account = RelationsPartOf("");
    auto& text = written_[account];
    auto document = LoadPartXml(text.empty() ? package_.Read(account) : text);
    for (const auto& relation : document.document_element().children()) {
      if (relation.attribute("Type").value() == kPropertiesRelation) return;
    }
    AddLike(document.document_element(), "Relationship",
            {{"Id", "rIdProperties"}, {"Type", kPropertiesRelation}, {"Target", properties_part}});
    text = PartText(document);
  }

  static void AddLike(pugi::xml_node root, const std::string& local_name,
                      const std::vector<std::pair<std::string, std::string_view>>& attributes) {
    const std::string name = root.name();
    const auto prefix = name.substr(0, name.size() - LocalNameOf(name).size());
    auto element = root.append_child((prefix + local_name).c_str());
    for (const auto& [attribute, value] : attributes) {
      element.append_attribute(attribute.c_str()).set_value(std::string(value).c_str());
    }
  }

  bool IsKeptPart(std::string_view name) const { return kept_.contains(platform::LowerCase(name)); }

  std::string Packed() const {
    std::vector<PackagePart> parts;
    for (const auto& [name, content] : written_) parts.push_back({name, content});
    return package_.With(parts, [this](std::string_view name) { return IsKeptPart(name); });
  }

  const DocxPackage& package_;
  const std::string main_part_;
  std::vector<DocxStory> stories_;
  LinkStyle link_style_;
  std::map<std::string, Names> unused_;  // ids of relations by part
  Names kept_;                           // parts, in lower case
  std::map<std::string, std::string> written_;
};

}  // namespace

OutgoingPackage::OutgoingPackage(DocxPackage package, DocumentProperties properties)
    : package_(std::make_shared<const DocxPackage>(std::move(package))),
      properties_(std::move(properties)),
      latest_(std::make_unique<Latest>()) {}

std::shared_ptr<const DocxPackage> OutgoingPackage::OfOffice(const std::string& office) const {
  if (office.empty()) return package_;
  const std::lock_guard lock(latest_->mutex);
  if (latest_->package == nullptr || latest_->office != office) {
    const auto text = PropertiesText(properties_, office);
    latest_->package = std::make_shared<const DocxPackage>(
        DocxPackage::FromBytes(package_->With({{properties_.part, text}}), package_->file_name()));
    latest_->office = office;
  }
  return latest_->package;
}

CleanedDocument CleanDocument(const DocxPackage& package, const std::string& main_part) {
  return DocumentCleaner(package, main_part).Run();
}

}  // namespace wordprocessor
