#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace wordprocessor {

/// Throws Failure, as DocxDocument::FromBytes does, where `content` is no document that letters can be made
/// of.
void RequireTemplate(std::string content, const std::string& file_name);

/// Clears the local template folder of documents that no letter can be made of, so that they are missing and
/// the start fetches them: what a copy that broke off has left (nothing, zeros, the first half of a document)
/// is removed, any other damaged document gets the ending ".damaged" after its name. Files that are no
/// documents by their ending stay.
///
/// Returns a sentence for each. Never throws: what cannot be read or renamed stays.
/// Decision [damaged-templates].
std::vector<std::string> ClearOfBrokenTemplates(const std::filesystem::path& folder) noexcept;

}  // namespace wordprocessor
