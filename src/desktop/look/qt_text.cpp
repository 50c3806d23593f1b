#include "desktop/look/qt_text.h"

namespace desktop {

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromQt(const QString& text) {
  return text.toStdString();
}

QString WithoutMnemonic(std::string_view caption) {
  QString read;
  bool marked = false;
  for (const QChar letter : ToQt(caption)) {
    marked = letter == QLatin1Char('&') && !marked;
    if (!marked) read += letter;
  }
  return read;
}

QString LabelText(std::string_view caption) {
  return ToQt(caption).replace(QLatin1String("&&"), QLatin1String("&"));
}

QString MessageText(std::string_view text) {
  auto lines = ToQt(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
  while (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
  return lines;
}

}  // namespace desktop
