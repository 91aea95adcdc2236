// Documents on paper.
#pragma once

#include "platform/files/RichDocument.h"

class QPrinter;
class QWidget;

namespace tarvolinex {

// Asks for a printer and its pages, and prints. False when the user cancels. Throws RuntimeError when the printer does
// not take the document. parent may be null.
bool AskAndPrint(QWidget* parent, const RichDocument& document);

// The same on a printer that has been chosen.
void PrintOn(QPrinter& printer, const RichDocument& document);

}  // namespace tarvolinex
