#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Parts of a package by name.
using Parts = std::vector<std::pair<std::string, std::string>>;

/// A zip file's bytes.
std::string Zip(const Parts& parts);

/// A DOCX file's bytes: `body` is what stands inside w:body; `relationships` what stands inside the
/// document's relationships part; `more` adds parts.
std::string Letter(std::string_view body, std::string_view relationships = "", const Parts& more = {});

/// A paragraph of text.
std::string Paragraph(std::string_view text);

/// The text of a PDF as a reader sees it.
std::string PdfText(const std::filesystem::path& pdf);

/// What `command` prints.
std::string OutputOf(const std::string& command);
