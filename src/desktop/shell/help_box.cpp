#include "desktop/shell/help_box.h"

#include <QMessageBox>

namespace desktop {
namespace {

constexpr auto kHelp = R"(<p><b>A letter.</b> On the page Generate, choose a customer or type a form number,
then a letter under Correspondence Names, then Create Letter. The preview prints and saves it.</p>
<p><b>Letters already produced.</b> On the page Search, give one criterion or more and a letter status, then
Search. Choose rows of the list to see what can be done with them.</p>
<p><b>Nightly batch runs.</b> On the page Batches, choose a date and a status, then Search.</p>
<table cellspacing="4">
<tr><td>Alt + underlined letter</td><td>page, field or button of that name; Alt+C selects a customer</td></tr>
<tr><td>Tab, Shift+Tab</td><td>next and previous field</td></tr>
<tr><td>F4, Down or typing</td><td>opens a list; it offers what holds every typed word, Enter chooses,
Esc closes it</td></tr>
<tr><td>The mouse over a grey button or option</td><td>says why it cannot be used</td></tr>
<tr><td>Space or Enter</td><td>chooses an option; once more repeats it</td></tr>
<tr><td>Enter in a criterion</td><td>Search, and on in the letters found</td></tr>
<tr><td>Ctrl+V in a form number</td><td>pastes a number that is right; a wrong one beeps</td></tr>
<tr><td>Shift or Ctrl with a click or arrow</td><td>several rows of a list</td></tr>
<tr><td>A click on a heading, Alt+Up or Alt+Down</td><td>sorts a list by that column; a second click turns
the order round</td></tr>
<tr><td>Ctrl+F, F3, Shift+F3</td><td>finds a text in a list; the next and the previous place</td></tr>
<tr><td>Ctrl+A, Ctrl+C in a list</td><td>selects every row; copies the selected rows for a spreadsheet</td></tr>
<tr><td>Right click or Menu key in a list</td><td>hides, shows and fits columns; drag a heading to move or widen
it</td></tr>
<tr><td>Enter, Tab, Space in a letter's form</td><td>next missing value, next value, ticks a paragraph; Esc
closes the form, which offers the same entries when the same letter is asked for again</td></tr>
<tr><td>Ctrl+P, Ctrl+S, Ctrl+F, Esc</td><td>in a preview: print, save, find, close</td></tr>
</table>)";

}  // namespace

void ShowHelp(QWidget& parent) {
  auto* box = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Help"), QString::fromUtf8(kHelp),
                              QMessageBox::Close, &parent);
  box->setTextFormat(Qt::RichText);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::NonModal);  // read beside the window
  box->show();
}

}  // namespace desktop
