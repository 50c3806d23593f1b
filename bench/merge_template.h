#pragma once

#include <string>

/// A template as a word processor writes one: two pages and forty bookmarks (in the body, in table cells, in
/// header and footer, three of them optional paragraphs) for every forty asked for.
struct MergeTemplate {
  std::string docx;
  std::string context;  ///< a value for each bookmark; one of the three optional paragraphs stays empty
};

MergeTemplate MakeMergeTemplate(int bookmarks);
