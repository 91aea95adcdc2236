// Hands documents, programs and addresses to the desktop.
#pragma once

#include <string>

class QWidget;

namespace tarvolinex {

// Results as Desktop::ShellExecute: 33 on success, 2 for a file that does not exist, 31 when nothing opens it. A
// program (by path or by name) is started with the parameters in the folder; an address with a scheme goes to the
// desktop as it is; anything else is a document or folder and goes to the program that the desktop has for it.
int OpenDocument(const std::string& file, const std::string& parameters, const std::string& folder);

// Opens a text in the desktop's editor of plain texts, because what opens a page mostly cannot edit it; the same
// results.
int EditDocument(const std::string& file, const std::string& folder);

// Asks for a program and starts it with the file; the same results. A user who cancels has succeeded.
int OpenDocumentWith(QWidget* parent, const std::string& file);

}  // namespace tarvolinex
