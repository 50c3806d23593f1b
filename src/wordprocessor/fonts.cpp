#include "wordprocessor/fonts.h"

#include <memory>
#include <string_view>

#include <fontconfig/fontconfig.h>

#include "platform/xml_escape.h"
#include "wordprocessor/docx_file.h"
#include "wordprocessor/docx_package.h"

namespace wordprocessor {
namespace {

/// Calls `take` with the value of each attribute whose name ends like that; parts may use any prefix. They
/// have been read as XML when the template was made: what stands between quotation marks is a value.
template <typename Take>
void ForEachValue(std::string_view xml, const std::string& attribute, Take take) {
  const auto start = attribute + "=\"";
  for (auto place = xml.find(start); place != std::string_view::npos; place = xml.find(start, place)) {
    place += start.size();
    take(platform::XmlUnescaped(xml.substr(place, xml.find('"', place) - place)));
  }
}

std::string PartOrNothing(const DocxPackage& package, std::string_view name) {
  return package.Has(name) ? package.Read(name) : "";
}

/// The theme's typeface for headings ("major") or text ("minor"); "" where it names none.
std::string ThemeFont(std::string_view theme, std::string_view kind) {
  const auto fonts = theme.find(std::string(kind) + "Font>");
  const auto latin = fonts == std::string_view::npos ? fonts : theme.find("latin ", fonts);
  std::string font;
  if (latin != std::string_view::npos) {
    ForEachValue(theme.substr(latin, theme.find('>', latin) - latin), "typeface",
                 [&](const std::string& name) { font = name; });
  }
  return font;
}

}  // namespace

std::set<std::string> FontsOf(const std::filesystem::path& file) {
  const auto package = DocxPackage::FromBytes(ReadFile(file).bytes, file.filename().string());
  std::set<std::string> fonts;
  std::string theme;
  for (const auto* part : {"word/styles.xml", "word/document.xml"}) {
    const auto xml = PartOrNothing(package, part);
    ForEachValue(xml, ":ascii", [&](const std::string& name) { fonts.insert(name); });
    ForEachValue(xml, ":hAnsi", [&](const std::string& name) { fonts.insert(name); });
    ForEachValue(xml, ":asciiTheme", [&](const std::string& name) {
      if (theme.empty()) theme = PartOrNothing(package, "word/theme/theme1.xml");
      fonts.insert(ThemeFont(theme, name.substr(0, 5)));
    });
  }
  fonts.erase("");
  return fonts;
}

bool HasFont(const std::string& family) {
  const std::unique_ptr<FcPattern, void (*)(FcPattern*)> wanted(FcPatternCreate(), FcPatternDestroy);
  const std::unique_ptr<FcObjectSet, void (*)(FcObjectSet*)> nothing_else(FcObjectSetCreate(),
                                                                          FcObjectSetDestroy);
  FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  const std::unique_ptr<FcFontSet, void (*)(FcFontSet*)> found(
      FcFontList(nullptr, wanted.get(), nothing_else.get()), FcFontSetDestroy);
  return found != nullptr && found->nfont > 0;
}

}  // namespace wordprocessor
