#include "platform/xml/xml_declaration.h"

#include <algorithm>
#include <array>

#include "platform/text.h"
#include "platform/xml/xml_characters.h"

namespace platform {
namespace {

bool IsVersion(std::string_view value) {
  return value.size() > 2 && value.starts_with("1.") &&
         value.find_first_not_of("0123456789", 2) == std::string_view::npos;
}
bool IsUtf8(std::string_view value) {
  return EqualsIgnoringCase(value, "utf-8");
}
bool IsYesOrNo(std::string_view value) {
  return value == "yes" || value == "no";
}

struct Part {
  std::string_view name;
  bool (*takes)(std::string_view value);
  XmlFault fault;
  std::string_view instead;
};

// In the order in which they stand; the first one must be there.
constexpr auto kParts = std::to_array<Part>({
    {"version", IsVersion, XmlFault::kDeclaration, "Write \"1.0\"."},
    {"encoding", IsUtf8, XmlFault::kEncoding, "Write the document in \"UTF-8\"."},
    {"standalone", IsYesOrNo, XmlFault::kDeclaration, "Write \"yes\" or \"no\"."},
});

/// Reads one part, which is at least `next`; `next` becomes the one that may follow it.
bool ReadPart(XmlCursor& cursor, const Part*& next) {
  const auto start = cursor.at();
  std::string_view name;
  if (!cursor.ReadName(name)) return false;
  const auto* part =
      std::find_if(next, kParts.end(), [name](const Part& known) { return known.name == name; });
  if (part == kParts.end() || (next == kParts.begin() && part != next)) {
    return cursor.Fail(XmlFault::kDeclaration,
                       XmlQuoted(name) + " must not stand here in the XML declaration.", start);
  }
  next = part + 1;
  cursor.SkipSpace();
  if (!cursor.Take("="))
    return cursor.FailHere(XmlFault::kDeclaration, "\"=\" is missing in the XML declaration.");
  cursor.SkipSpace();
  std::string_view value;
  if (!cursor.ReadValue(value)) return false;
  if (part->takes(value)) return true;
  return cursor.Fail(part->fault,
                     "The XML declaration gives the " + std::string(name) + " as " + XmlQuoted(value) + ". " +
                         std::string(part->instead),
                     start);
}

}  // namespace

bool ReadXmlDeclaration(XmlCursor& cursor) {
  constexpr std::string_view kStart = "<?xml";
  const auto start = cursor.at();
  if (!cursor.Take(kStart)) return true;
  const Part* next = kParts.begin();
  for (;;) {
    const bool space = cursor.SkipSpace();
    if (!space && next == kParts.begin()) {
      cursor.MoveTo(start);  // an instruction whose name goes on, or one that is wrong
      return true;
    }
    if (next != kParts.begin() && cursor.Take("?>")) return true;
    if (!space) return cursor.FailHere(XmlFault::kDeclaration, "A blank is missing in the XML declaration.");
    if (!ReadPart(cursor, next)) return false;
  }
}

}  // namespace platform
