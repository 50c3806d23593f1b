#include "wordprocessor/document/common_template.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "platform/failure.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/document/common_pages.h"
#include "wordprocessor/document/letterhead_numbering.h"
#include "wordprocessor/document/letterhead_styles.h"
#include "wordprocessor/docx/part_copier.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

class CommonTemplate {
 public:
  CommonTemplate(const DocxPackage& letter, const DocxPackage& common)
      : letter_(letter),
        common_(common),
        main_part_(FindMainPart(letter)),
        common_main_part_(FindMainPart(common)),
        document_(LoadPartXml(letter.Read(main_part_))),
        common_document_(LoadPartXml(common.Read(common_main_part_))),
        copier_(letter, common, main_part_),
        relations_(ReadRelations(letter, main_part_)),
        common_relations_(ReadRelations(common, common_main_part_)),
        common_styles_(common, common_relations_) {}

  std::optional<std::string> Attach() {
    CommonPages pages({letter_, relations_, document_}, {common_, common_relations_, common_document_},
                      copier_);
    if (pages.Attach()) changed_[main_part_] = PartText(document_);
    AttachStyles(pages.letterhead());
    std::vector<PackagePart> parts;
    for (const auto& [name, text] : changed_) parts.push_back({name, text});
    copier_.AppendTo(parts);
    return parts.empty() ? std::nullopt : std::optional(letter_.With(parts));
  }

 private:
  /// `letterhead`: the header and footer parts taken, by the common template's names.
  void AttachStyles(const std::set<std::string>& letterhead) {
    const auto* common = FindRelated(common_relations_, common_, "styles");
    const auto* own = FindRelated(relations_, letter_, "styles");
    if (common != nullptr && own == nullptr) copier_.Relate(*common);
    // What nobody asks for is not read: a damaged theme keeps no letter from being made.
    std::optional<SettledStyles> own_styles;
    if (own != nullptr && !letterhead.empty()) own_styles.emplace(letter_, relations_);
    LetterheadStyles styles(common_styles_, own_styles ? *own_styles : common_styles_);
    AttachLetterhead(letterhead, styles);
    if (common == nullptr) return;
    const auto target =
        LoadPartXml(own == nullptr ? PartText(common_styles_.document) : letter_.Read(own->target));
    bool changed = AddMissingStyles(target.document_element());
    changed = styles.AddTo(target.document_element()) || changed;
    if (own == nullptr) {
      copier_.Rewrite(common->target, PartText(target));
    } else if (changed) {
      changed_[own->target] = PartText(target);
    }
  }

  /// Its parts look as they do in the common template, whatever the letter calls by the same names.
  void AttachLetterhead(const std::set<std::string>& letterhead, LetterheadStyles& styles) {
    const auto* common = FindRelated(common_relations_, common_, "numbering");
    const auto* own = common == nullptr ? nullptr : FindRelated(relations_, letter_, "numbering");
    const auto common_lists =
        common == nullptr ? pugi::xml_document() : LoadPartXml(common_.Read(common->target));
    LetterheadNumbering lists(common_lists,
                              own == nullptr ? pugi::xml_document() : LoadPartXml(letter_.Read(own->target)));
    for (const auto& part : letterhead) {
      const auto document = LoadPartXml(common_.Read(part));
      const auto root = document.document_element();
      bool changed = SettleTheme(root, common_, common_relations_);
      changed = styles.Rename(root) || changed;
      changed = lists.Renumber(root) || changed;
      if (changed) copier_.Rewrite(part, PartText(document));
    }
    lists.Renumber(styles.made());
    const auto text = lists.Text();
    if (text && own == nullptr) {
      copier_.Relate(*common);
      copier_.Rewrite(common->target, *text);
    } else if (text) {
      changed_[own->target] = *text;
    }
  }

  bool AddMissingStyles(pugi::xml_node styles) const {
    const PartNames names(styles);
    std::set<std::string> known;
    std::set<std::string> with_default;
    for (const auto& style : WordChildren(styles, "style")) {
      known.insert(WordAttribute(style, "styleId"));
      if (!WordAttribute(style, "default").empty()) with_default.insert(WordAttribute(style, "type"));
    }
    const auto common = common_styles_.document.document_element();
    bool added = false;
    if (const auto defaults = WordChild(common, "docDefaults");
        defaults && !WordChild(styles, "docDefaults")) {
      CopyWordElement(defaults, styles.prepend_child(pugi::node_element), names);
      added = true;
    }
    for (const auto& style : WordChildren(common, "style")) {
      if (known.contains(WordAttribute(style, "styleId"))) continue;
      auto copy = styles.append_child(pugi::node_element);
      // Its numbering is defined in a part that stays behind.
      CopyWordElement(style, copy, names, "numPr");
      if (with_default.contains(WordAttribute(style, "type"))) {
        copy.remove_attribute(names.Attribute("default").c_str());
      }
      added = true;
    }
    return added;
  }

  const DocxPackage& letter_;
  const DocxPackage& common_;
  const std::string main_part_;
  const std::string common_main_part_;
  pugi::xml_document document_;
  pugi::xml_document common_document_;
  DocxPartCopier copier_;
  const std::vector<DocxRelation> relations_;
  const std::vector<DocxRelation> common_relations_;
  const SettledStyles common_styles_;
  std::map<std::string, std::string> changed_;  // text by part of the letter
};

}  // namespace

std::optional<std::string> WithCommonTemplate(const DocxPackage& letter, const DocxPackage& common) {
  return platform::While("attaching the common template \"" + common.file_name() + "\"",
                         [&] { return CommonTemplate(letter, common).Attach(); });
}

}  // namespace wordprocessor
