#include "wordprocessor/authoring/fonts.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include <fontconfig/fontconfig.h>

#include "platform/text.h"

namespace wordprocessor {
namespace {

// Typefaces whose characters have the same widths, separated by semicolons: what the makers of the free ones
// say of them, and fontconfig's 30-metric-aliases.conf lists, without those that it calls similar only.
constexpr auto kSameWidths = std::to_array<std::string_view>({
    ";arial;liberation sans;arimo;albany;albany amt;helvetica;nimbus sans;nimbus sans l;tex gyre heros;",
    ";arial narrow;liberation sans narrow;helvetica narrow;nimbus sans narrow;tex gyre heros cn;",
    ";times new roman;liberation serif;tinos;thorndale;thorndale amt;times;nimbus roman;nimbus roman no9 l;"
    "tex gyre termes;",
    ";courier new;liberation mono;cousine;cumberland;cumberland amt;courier;nimbus mono ps;nimbus mono l;"
    "tex gyre cursor;",
    ";calibri;carlito;",
    ";cambria;caladea;",
    ";georgia;gelasio;",
    ";itc avant garde gothic;urw gothic;urw gothic l;tex gyre adventor;",
    ";itc bookman;urw bookman;urw bookman l;tex gyre bonum;",
    ";palatino;p052;urw palladio l;tex gyre pagella;",
    ";new century schoolbook;c059;century schoolbook l;tex gyre schola;",
});

bool HaveSameWidths(const std::string& one, const std::string& other) {
  const auto has = [](std::string_view group, const std::string& name) {
    return group.find(';' + platform::LowerCase(name) + ';') != group.npos;
  };
  return std::ranges::any_of(kSameWidths,
                             [&](std::string_view group) { return has(group, one) && has(group, other); });
}

using Config = std::unique_ptr<FcConfig, void (*)(FcConfig*)>;
using Pattern = std::unique_ptr<FcPattern, void (*)(FcPattern*)>;

/// The typefaces of the machine, as the layout process finds them.
FcConfig* TypefacesOfTheMachine() {
  static const Config config = [] {
    const auto before = FcConfigEnableHome(FcFalse);
    Config loaded(FcInitLoadConfigAndFonts(), FcConfigDestroy);
    FcConfigEnableHome(before);
    return loaded;
  }();
  return config.get();
}

}  // namespace

LaidOutTypeface LayoutTypeface(const std::string& family) {
  auto* config = TypefacesOfTheMachine();
  const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
  FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcConfigSubstitute(config, wanted.get(), FcMatchPattern);
  FcDefaultSubstitute(wanted.get());
  auto result = FcResultNoMatch;
  const Pattern found(FcFontMatch(config, wanted.get(), &result), FcPatternDestroy);
  LaidOutTypeface laid_out;
  FcChar8* name = nullptr;
  // A typeface may have several names: that of its family, and one of its own.
  for (int i = 0; found && FcPatternGetString(found.get(), FC_FAMILY, i, &name) == FcResultMatch; ++i) {
    const std::string found_name = reinterpret_cast<const char*>(name);
    const bool itself = platform::EqualsIgnoringCase(found_name, family);
    if (itself || i == 0) laid_out = {found_name, itself || HaveSameWidths(family, found_name)};
    if (itself) break;
  }
  return laid_out;
}

}  // namespace wordprocessor
