#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "server/context/letter_fields.h"
#include "wordprocessor/authoring/template_field.h"

namespace apps {

/// The fields of a letter as its template may use them.
std::vector<wordprocessor::TemplateField> AsTemplateFields(const std::vector<server::LetterField>& fields);

/// The fields a template may use, from the letter definitions (letter_fields.tsv): those of `letter_type`;
/// where that is "", of the letter that the catalogue of the product uses the template for; where there is
/// none, those of every letter, without anything that has to be used.
///
/// Throws Failure kNotFound or kDamaged naming the file, kNotFound for a letter type without fields.
std::vector<wordprocessor::TemplateField> TemplateFields(const std::filesystem::path& definitions,
                                                         const std::string& template_name,
                                                         std::string letter_type);

/// The product's own.
std::filesystem::path LetterDefinitions();

}  // namespace apps
