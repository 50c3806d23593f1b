#!/usr/bin/python3
"""usage: make_with_libreoffice.py FOLDER [LETTER ...]

Writes templates into FOLDER as their authors write them, with LibreOffice: recorded changes, a letter with header,
footer, logo, table and two sections, a mail merge's letter; and saves each LETTER again as DOCX. "LEAK" stands for the author. (Comments come
from a LETTER: an office without windows ends when one is inserted.)
"""
import os
import subprocess
import sys
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.text.ControlCharacter import PARAGRAPH_BREAK
from com.sun.star.text.TextContentAnchorType import AS_CHARACTER

DOT = bytes.fromhex(
    "89504e470d0a1a0a0000000d4948445200000001000000010806000000"
    "1f15c4890000000d49444154789c63fccfc0500f00048501809"
    "84a8c310000000049454e44ae426082"
)


def value(name, content):
    return PropertyValue(Name=name, Value=content)


def start(folder):
    pipe = "zemlo-test-%d" % os.getpid()
    office = subprocess.Popen(
        ["soffice", "-env:UserInstallation=" + uno.systemPathToFileUrl(os.path.join(folder, "profile")),
         "--headless", "--norestore", "--accept=pipe,name=%s;urp" % pipe],
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    resolver = uno.getComponentContext().ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
    for _ in range(600):
        try:
            context = resolver.resolve("uno:pipe,name=%s;urp;StarOffice.ComponentContext" % pipe)
            return office, context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        except Exception:  # not up yet
            if office.poll() not in (None, 81):
                raise
            time.sleep(0.1)
    raise RuntimeError("LibreOffice does not come up")


class Letter:
    def __init__(self, desktop, folder):
        self.document = desktop.loadComponentFromURL("private:factory/swriter", "_blank", 0, (value("Hidden", True),))
        self.folder = folder
        self.text = self.document.Text
        self.cursor = self.text.createTextCursor()
        self.document.DocumentProperties.Author = "LEAK"
        self.document.DocumentProperties.Title = "Notice of change"

    def make(self, service, **properties):
        made = self.document.createInstance("com.sun.star." + service)
        for name, content in properties.items():
            setattr(made, name, content)
        return made

    def write(self, words, text=None, **properties):
        text = text or self.text
        cursor = text.createTextCursorByRange(text.End)
        for name, content in properties.items():
            setattr(cursor, name, content)
        text.insertString(cursor, words, True)
        for name, content in properties.items():
            setattr(cursor, name, content)
        return cursor

    def end(self, text=None):
        text = text or self.text
        text.insertControlCharacter(text.End, PARAGRAPH_BREAK, False)

    def mark(self, name, words, text=None):
        text = text or self.text
        text.insertTextContent(self.write(words, text), self.make("text.Bookmark", Name=name), True)

    def find(self, words):
        search = self.document.createSearchDescriptor()
        search.SearchString = words
        return self.document.findFirst(search)

    def save(self, name):
        url = uno.systemPathToFileUrl(os.path.join(self.folder, name))
        self.document.storeToURL(url, (value("FilterName", "MS Word 2007 XML"),))
        self.document.close(True)


def changes(letter):
    letter.mark("CUSTOMER_NAME", "[Customer name]")
    letter.write(" owes the old amount of ")
    letter.mark("AMOUNT", "[Amount]")
    letter.write(" today.")
    letter.end()
    letter.write("Pay ")
    letter.mark("GONE", "[Gone]")
    letter.write(" at once. ")
    letter.write("Thank you.")
    letter.end()
    letter.write("First half ")
    letter.end()
    letter.write("and second half.")
    letter.end()
    letter.write("A paragraph that goes.")
    letter.end()
    letter.write("Bold later.")
    letter.end()
    table = letter.make("text.TextTable")
    table.initialize(3, 2)
    letter.text.insertTextContent(letter.text.End, table, False)
    for name, words in zip(table.CellNames, ("Kept one", "a", "Deleted row", "b", "Kept two", "c")):
        table.getCellByName(name).String = words
    letter.document.RecordChanges = True
    letter.find("old ").String = ""
    found = letter.find("amount")
    found.Text.insertString(found.Start, "new ", False)
    for words in ("Pay ", "[Gone]", " at once. "):
        letter.find(words).String = ""
    first = letter.find("First half ")
    first.collapseToEnd()
    first.goRight(1, True)
    first.String = ""
    gone = letter.find("A paragraph that goes.")
    gone.goRight(1, True)
    gone.String = ""
    letter.find("Bold later.").CharWeight = 150.0
    table.Rows.removeByIndex(1, 1)
    letter.document.RecordChanges = False


def whole_letter(letter):
    style = letter.document.StyleFamilies.getByName("PageStyles").getByName("Standard")
    style.HeaderIsOn = True
    style.FooterIsOn = True
    letter.mark("OFFICE_NAME", "[Office]", style.HeaderText)
    letter.write("Written on ", style.FooterText)
    date = letter.make("text.textfield.DateTime", IsDate=True, IsFixed=False)
    style.FooterText.insertTextContent(style.FooterText.End, date, False)
    logo = os.path.join(letter.folder, "logo.png")
    with open(logo, "wb") as file:
        file.write(DOT)
    graphic = letter.make("text.TextGraphicObject", AnchorType=AS_CHARACTER, Title="Seal",
                          Description="The seal of the office", Width=2000, Height=2000)
    graphic.GraphicURL = uno.systemPathToFileUrl(logo)
    letter.text.insertTextContent(letter.text.End, graphic, False)
    letter.end()
    letter.write("Notice of change", ParaStyleName="Heading 1")
    letter.end()
    letter.write("Dear ", ParaStyleName="Standard", CharFontName="Calibri")
    letter.mark("CUSTOMER_NAME", "[Customer name]")
    letter.write(" secret words", CharHidden=True)
    letter.write(", this is what changed:", CharHidden=False)
    letter.end()
    table = letter.make("text.TextTable")
    table.initialize(2, 2)
    table.RepeatHeadline = True
    letter.text.insertTextContent(letter.text.End, table, False)
    for name, words in zip(table.CellNames, ("Period", "Tax")):
        table.getCellByName(name).String = words
    first = table.getCellByName("A2")
    first.Text.insertTextContent(first.Text.Start, letter.make("text.Bookmark", Name="TAX_PERIODS"), False)
    letter.mark("PERIOD_NAME", "[Period]", first.Text)
    letter.mark("PERIOD_TAX", "[Tax]", table.getCellByName("B2").Text)
    second = letter.document.StyleFamilies.getByName("PageStyles")
    second.insertByName("Second", letter.make("style.PageStyle"))
    letter.end()
    last = letter.write("A second section for ")
    last.PageDescName = "Second"
    letter.mark("CUSTOMER_NAME__1", "[Customer name]")


def mail_merge(letter):
    def merge(column, text=None):
        text = text or letter.text
        master = letter.make("text.FieldMaster.Database", DataBaseName="Customers", DataTableName="List",
                             DataColumnName=column)
        field = letter.make("text.TextField.Database")
        field.attachTextFieldMaster(master)
        text.insertTextContent(text.End, field, False)

    style = letter.document.StyleFamilies.getByName("PageStyles").getByName("Standard")
    style.HeaderIsOn = True
    merge("OFFICE_NAME", style.HeaderText)
    letter.write("Dear ")
    merge("Customer Name")
    letter.write(", you owe ", CharWeight=100.0)
    merge("AMOUNT")
    note = letter.make("text.Footnote")
    letter.text.insertTextContent(letter.text.End, note, False)
    note.insertString(note.End, "Due from ", False)
    merge("Customer Name", note)
    letter.end()
    table = letter.make("text.TextTable")
    table.initialize(1, 2)
    letter.text.insertTextContent(letter.text.End, table, False)
    table.getCellByName("A1").String = "Amount"
    merge("AMOUNT", table.getCellByName("B1").Text)
    frame = letter.make("text.TextFrame", Width=6000, Height=1000)
    letter.text.insertTextContent(letter.text.End, frame, False)
    frame.Text.insertString(frame.Text.End, "For ", False)
    merge("Customer Name", frame.Text)


def main():
    folder = os.path.abspath(sys.argv[1])
    office, desktop = start(folder)
    try:
        for fill in (changes, whole_letter, mail_merge):
            letter = Letter(desktop, folder)
            fill(letter)
            letter.save(fill.__name__ + ".docx")
        try:
            desktop.terminate()
        except Exception:  # it goes while it answers
            pass
        office.wait(60)
    finally:
        office.kill()
    subprocess.run(["soffice", "-env:UserInstallation=" + uno.systemPathToFileUrl(os.path.join(folder, "profile")),
                    "--headless", "--convert-to", "docx", "--outdir", folder] + sys.argv[2:],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


main()
