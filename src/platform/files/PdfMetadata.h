// What the toolkit's writer of PDF files leaves out.
#pragma once

#include <string>

namespace tarvolinex {

// Puts the author and the language (empty = none) of the whole document into a PDF/A file that the toolkit has written:
// into its catalog, its information and its metadata, which have to say the same.
// Throws RuntimeError when the file is not built as the toolkit builds them.
std::string WithAuthorAndLanguage(std::string pdf, const std::string& author, const std::string& language);

}  // namespace tarvolinex
