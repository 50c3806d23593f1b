#pragma once

#include <string>
#include <string_view>

#include <QString>

/// Texts between the rooms (UTF-8) and the window.
namespace desktop {

QString ToQt(std::string_view text);
std::string FromQt(const QString& text);

/// A caption as it is read out: without the "&" of its mnemonic; "&&" is one ampersand.
QString WithoutMnemonic(std::string_view caption);
/// A label's text as it is read: "&&" is one ampersand, a single "&" stays.
QString LabelText(std::string_view caption);
/// A message box's text: lines end with a line feed, no empty lines at the end.
QString MessageText(std::string_view text);

}  // namespace desktop
