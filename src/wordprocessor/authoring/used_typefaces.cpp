#include "wordprocessor/authoring/used_typefaces.h"

#include <algorithm>
#include <set>

#include "platform/text.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/property_values.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/typeface_names.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

/// The typefaces that a document brings along (ECMA-376, part 1, 17.8.3.3), in lower case.
std::set<std::string> EmbeddedTypefaces(const DocxPackage& package,
                                        const std::vector<DocxRelation>& relations) {
  std::set<std::string> names;
  const auto* part = FindRelated(relations, package, "fontTable");
  if (part == nullptr) return names;
  const auto files = ReadRelations(package, part->target);
  const auto table = LoadPartXml(package.Read(part->target));
  for (const auto& font : WordChildren(table.document_element(), "font")) {
    const auto embedded = WordChild(font, "embedRegular");
    for (const auto& attribute : embedded.attributes()) {
      if (LocalNameOf(attribute.name()) != "id") continue;
      const auto file = std::ranges::find(files, attribute.value(), &DocxRelation::id);
      if (file != files.end() && LeadsToPart(*file, package))
        names.insert(platform::LowerCase(WordAttribute(font, "name")));
    }
  }
  return names;
}

class TypefaceSearch {
 public:
  TypefaceSearch(const TypefaceStyles& styles, std::set<std::string> embedded)
      : styles_(styles), embedded_(std::move(embedded)) {}

  void Search(const DocxStory& story, const DocxPlaces& places) {
    const auto& tree = story.tree;
    for (NodeId node = 0; node < tree.size(); ++node) {
      const auto parent = tree[node].parent;
      if (tree[node].kind != DocxKind::kMarkup || parent == kNoNode) continue;
      if (tree[parent].kind != DocxKind::kText || !tree.IsAttached(node)) continue;
      const auto scripts = ScriptsIn(Unescaped(tree[node].markup));
      for (std::size_t i = 0; i < kScripts; ++i) {
        if (scripts[i]) Add(NameAt(tree, tree[parent].parent, static_cast<Script>(i)), places, node);
      }
    }
  }

  std::vector<UsedTypeface> Found() && { return std::move(found_); }

 private:
  /// ECMA-376, part 1, 17.7.2: a run's own properties, its style, that of its paragraph, of its table.
  std::string NameAt(const DocxTree& tree, NodeId run, Script script) const {
    const auto properties = tree.ChildOfKind(run, DocxKind::kRunProperties);
    const auto fonts = PropertyOf(tree, properties, "rFonts");
    if (fonts != kNoNode) {
      const auto names = styles_.NamesIn(
          [&](std::string_view attribute) { return Unescaped(tree.Attribute(fonts, attribute)); });
      const auto& own = names[static_cast<std::size_t>(script)];
      if (!own.empty()) return own;
    }
    const auto of_run = styles_.Of(StyleNamed(tree, properties, "rStyle"), script);
    return of_run.empty() ? NameOfParagraph(tree, run, script) : of_run;
  }

  std::string NameOfParagraph(const DocxTree& tree, NodeId run, Script script) const {
    const auto paragraph = ParagraphOf(tree, run);
    const auto properties =
        paragraph == kNoNode ? kNoNode : tree.ChildOfKind(paragraph, DocxKind::kParagraphProperties);
    const auto style = StyleNamed(tree, properties, "pStyle");
    const auto of_paragraph = styles_.Of(style.empty() ? styles_.default_paragraph() : style, script);
    if (!of_paragraph.empty()) return of_paragraph;
    const auto table = tree.Ancestor(run, DocxKind::kTable);
    const auto of_table =
        table == kNoNode ? std::string()
                         : styles_.Of(StyleNamed(tree, PropertyOf(tree, table, "tblPr"), "tblStyle"), script);
    return of_table.empty() ? styles_.Default(script) : of_table;
  }

  void Add(const std::string& name, const DocxPlaces& places, NodeId node) {
    const auto key = platform::LowerCase(name);
    if (name.empty() || !names_.insert(key).second) return;
    found_.push_back({name, places.Of(node), embedded_.contains(key)});
  }

  const TypefaceStyles& styles_;
  const std::set<std::string> embedded_;
  std::set<std::string> names_;  ///< in lower case
  std::vector<UsedTypeface> found_;
};

}  // namespace

std::vector<UsedTypeface> FindTypefaces(const DocxStories& letter) {
  const TypefaceStyles styles(letter.package(), letter.relations());
  TypefaceSearch search(styles, EmbeddedTypefaces(letter.package(), letter.relations()));
  for (const auto& story : letter.all()) search.Search(story, letter.PlacesOf(story));
  return std::move(search).Found();
}

}  // namespace wordprocessor
