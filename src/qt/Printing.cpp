#include "qt/Printing.h"

#include <QPrintDialog>
#include <QPrinter>

#include "platform/RuntimeError.h"
#include "platform/files/PaintedPages.h"
#include "platform/text/Translation.h"
#include "qt/Look.h"

namespace tarvolinex {

bool AskAndPrint(QWidget* parent, const RichDocument& document) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  PrintOn(printer, document);
  return true;
}

void PrintOn(QPrinter& printer, const RichDocument& document) {
  printer.setDocName(Shown(document.title));
  printer.setCreator("Tarvolinex");
  if (PaintedPages(document, printer).Paint()) return;
  throw RuntimeError(kDeviceError, Tr("The printer does not take the document"));
}

}  // namespace tarvolinex
