// Documents as PDF files.
#pragma once

#include <string>
#include <string_view>

#include "platform/files/RichDocument.h"

namespace tarvolinex {

// A4, PDF/A-1b: fonts are embedded, text can be selected and searched, title, author and language are told. A table
// that goes on on the next page repeats its head (<thead>). Works with and without windows.
// REQUIRES: the thread of the windows.
// Throws RuntimeError when the machine has no font.
std::string PdfBytes(const RichDocument& document);

// Writes it, whole or not at all. Throws RuntimeError.
void WritePdf(const RichDocument& document, std::string_view path);

}  // namespace tarvolinex
