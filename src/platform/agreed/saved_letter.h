#pragma once

#include <optional>
#include <string_view>

/// The files that letters are saved as.
namespace platform {

enum class SavedAs { kDocument, kPdf };

inline constexpr const char* kDocumentEnding = ".docx";
inline constexpr const char* kPdfEnding = ".pdf";

/// By a file's ending or a format, without regard to case and with or without its dot (".docx", "PDF");
/// nothing for anything else, nothing too.
std::optional<SavedAs> SavedAsOf(std::string_view ending);

}  // namespace platform
