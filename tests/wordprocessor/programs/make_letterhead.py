#!/usr/bin/python3
"""usage: make_letterhead.py LETTERHEAD.docx LETTER.docx

Writes with python-docx a letterhead (a table, a list, text in the default style, typefaces of the theme) and a letter
without one.
"""
import sys

import docx
from docx.oxml.ns import qn


def new_document():
    """One inch left and right, and of today's kind: python-docx begins with one of 2010."""
    document = docx.Document()
    for setting in document.settings.element.iter(qn("w:compatSetting")):
        if setting.get(qn("w:name")) == "compatibilityMode":
            setting.set(qn("w:val"), "15")
    document.sections[0].left_margin = document.sections[0].right_margin = docx.shared.Inches(1)
    return document


letterhead = new_document()
letterhead.styles["Footer"].font.italic = True
section = letterhead.sections[0]
header = section.header
table = header.add_table(2, 2, docx.shared.Inches(6))
table.style = "Table Grid"
for number, words in enumerate(("Department", "Division", "Capitol", "Telephone")):
    table.cell(number // 2, number % 2).text = words
header.add_paragraph("First service", style="List Number")
header.add_paragraph("Second service", style="List Number")
header.add_paragraph("Plain words of the header")
section.footer.paragraphs[0].text = "Korvada\tmiddle\tright"
letterhead.save(sys.argv[1])

letter = new_document()
letter.add_paragraph("Dear customer")
letter.save(sys.argv[2])
