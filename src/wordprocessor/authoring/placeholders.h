#pragma once

#include <string>
#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// A bookmark that ends right before the placeholder it was meant for, as web pages and some programs set
/// them (`Dear |[Customer name]`), a blank before it, or inside of it. The letter would show value and
/// placeholder.
struct MissedPlaceholder {
  std::string bookmark;
  std::string placeholder;  ///< "[Customer name]"
  std::string place;        ///< as DocxPlaces says it
};

struct RepairedTemplate {
  std::vector<MissedPlaceholder> repaired;  ///< a text box told twice counts once
  std::string bytes;                        ///< of the .docx file; nothing else in it has changed
};

std::vector<TemplateFinding> FindingsOfPlaceholders(const DocxStories& written,
                                                    const std::vector<TemplateField>& fields);

/// Sets such bookmarks around their placeholders. A placeholder is what stands between brackets in one
/// paragraph and belongs to no other bookmark. A table's bookmark stays where it is: it means its row.
RepairedTemplate RepairPlaceholders(const DocxDocument& document, const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
