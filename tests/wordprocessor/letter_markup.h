#pragma once

#include <string>

#include <pugixml.hpp>

/// Pieces of documents as word processors write them, and what a reader sees of one. "LEAK" stands wherever
/// an author's name would.
namespace markup {

/// A run.
std::string Text(const std::string& text, const std::string& properties = "");
/// A tracked change.
std::string By(const std::string& element, const std::string& content);
std::string Ins(const std::string& text);
std::string Del(const std::string& text);
std::string Paragraph(const std::string& runs, const std::string& properties = "");
/// A paragraph whose end is inserted ("ins"), deleted ("del") or moved.
std::string EndIs(const std::string& how, const std::string& runs, const std::string& properties = "");
/// A bookmark around `content`.
std::string Mark(const std::string& name, const std::string& content, int id = 1);
std::string Cell(const std::string& blocks, const std::string& properties = "");
std::string Row(const std::string& cells, const std::string& properties = "");
std::string Table(const std::string& rows);
/// A text box of these blocks in a run, with its twin for older readers.
std::string BoxAndTwin(const std::string& blocks);
/// A field; a quote in its code is written "&quot;".
std::string Field(const std::string& code, const std::string& result);
std::string SimpleField(const std::string& code, const std::string& result);
/// "/" ends a paragraph, ";" a cell; a field's code stands between "{" and "}".
std::string Shown(const pugi::xml_node& node);
std::string ShownIn(const std::string& bytes, const std::string& part = "word/document.xml");

/// The template filled with NAME = "Ada", OFFICE_NAME = "Office K1", LTR_DT = "October 1, 2024" and two ROWS
/// with COL = "1" and "2".
std::string LetterFrom(const std::string& docx);

}  // namespace markup
