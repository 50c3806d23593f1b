#!/usr/bin/python3
"""usage: make_with_python_docx.py FILE.docx

Writes a template with python-docx: headers of the first and the other pages, a table, fields, properties.
"""
import sys

import docx
from docx.oxml import OxmlElement
from docx.oxml.ns import qn

document = docx.Document()
document.core_properties.author = "LEAK"
document.core_properties.last_modified_by = "LEAK"
document.core_properties.comments = "LEAK"
document.core_properties.title = "Notice of rates"


def element(tag, **attributes):
    made = OxmlElement(tag)
    for key, content in attributes.items():
        made.set(qn("w:" + key), content)
    return made


def mark(paragraph, number, name, words):
    paragraph._p.append(element("w:bookmarkStart", id=str(number), name=name))
    run = paragraph.add_run(words)
    paragraph._p.append(element("w:bookmarkEnd", id=str(number)))
    return run


def field(paragraph, code, words):
    for kind in ("begin", None, "separate", words, "end"):
        run = paragraph.add_run()
        if kind is None:
            run._r.append(element("w:instrText"))
            run._r[-1].text = code
        elif kind == words:
            run.text = words
        else:
            run._r.append(element("w:fldChar", fldCharType=kind))


section = document.sections[0]
section.different_first_page_header_footer = True
mark(section.first_page_header.paragraphs[0], 1, "OFFICE_NAME", "[Office]")
mark(section.header.paragraphs[0], 2, "CUSTOMER_NAME__1", "[Customer name]")
field(section.first_page_footer.paragraphs[0], ' DATE \\@ "dd.MM.yyyy" ', "01.01.1999")
document.add_heading("Notice of rates", 1)
paragraph = document.add_paragraph("Dear ")
mark(paragraph, 3, "CUSTOMER_NAME", "[Customer name]").bold = True
paragraph.add_run(", the ")
field(paragraph, ' INCLUDETEXT "C:\\\\LEAK.docx" ', "rates below")
paragraph.add_run(" apply.")
table = document.add_table(rows=2, cols=2)
table.rows[0].cells[0].text = "Period"
table.rows[0].cells[1].text = "Tax"
table.rows[0]._tr.get_or_add_trPr().append(element("w:tblHeader"))
row = table.rows[1].cells
mark(row[0].paragraphs[0], 4, "PERIOD_NAME", "[Period]")
mark(row[1].paragraphs[0], 5, "PERIOD_TAX", "[Tax]")
mark(row[1].paragraphs[0], 6, "TAX_PERIODS", "")
hidden = document.add_paragraph().add_run("secret words")
hidden.font.hidden = True
document.add_paragraph("Sincerely")
document.save(sys.argv[1])
