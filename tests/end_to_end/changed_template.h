#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "tests/end_to_end/program.h"

namespace tests {

/// Writes `to`, the template `from` (a name is one of the product's) with one text of its parts replaced by
/// another.
inline void WriteChangedTemplate(const std::filesystem::path& from, const std::filesystem::path& to,
                                 const std::string& text, const std::string& replacement) {
  const std::string program = R"(
import sys, zipfile
source, target, text, replacement = sys.argv[1:]
found = False
with zipfile.ZipFile(source) as old:
    parts = [(part, old.read(part)) for part in old.infolist()]
with zipfile.ZipFile(target, 'w', zipfile.ZIP_DEFLATED) as new:
    for part, content in parts:
        found = found or text.encode() in content
        new.writestr(part, content.replace(text.encode(), replacement.encode()))
sys.exit(0 if found else 'the text is not in it')
)";
  const auto source = std::filesystem::path(ZEMLO_SOURCE_DIR) / "data/templates" / from;
  const auto run = RunShell("/usr/bin/python3 -c " + Quoted(program) + " " + Quoted(source.string()) + " " +
                            Quoted(to.string()) + " " + Quoted(text) + " " + Quoted(replacement));
  if (run.status != 0) throw std::runtime_error(run.err);
}

/// The bookmark that shows the customer's name, misspelt.
inline void WriteTemplateWithError(const std::filesystem::path& to) {
  WriteChangedTemplate("REG101_2401.docx", to, "w:name=\"CUSTOMER_NAME\"", "w:name=\"CUSTOMR_NAME\"");
}

}  // namespace tests
