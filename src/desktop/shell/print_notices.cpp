#include "desktop/shell/print_notices.h"

#include "desktop/look/qt_text.h"

namespace desktop {

void PrintNotices::LetterPrinted(const std::string& destination) {
  shell_.ShowNotice(QStringLiteral("The letter was printed: %1").arg(ToQt(destination)));
}

void PrintNotices::LetterSaved(const std::filesystem::path& file) {
  shell_.ShowNotice(QStringLiteral("The letter was saved: %1").arg(ToQt(file.string())));
}

void PrintNotices::BookmarksNotFilled(const std::string& document, const std::vector<std::string>& names) {
  QStringList listed;
  for (const auto& name : names) listed += ToQt(name);
  shell_.ShowNotice(QStringLiteral("No field of the letter fills these places of \"%1\": %2")
                        .arg(ToQt(document), listed.join(QStringLiteral(", "))));
}

}  // namespace desktop
