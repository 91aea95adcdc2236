#include "platform/files/PdfDocument.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPdfWriter>
#include <memory>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/MachineFonts.h"
#include "platform/files/PaintedPages.h"
#include "platform/files/PdfMetadata.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

// Fonts need an application of the toolkit. Where there are windows there is one; else this is one that shows nothing
// and asks no display, for as long as it is needed.
class SomeApplication {
 public:
  SomeApplication() {
    if (QCoreApplication::instance()) return;
    UseFontsByName();
    // What it would tell of the missing desktop concerns nobody.
    const QtMessageHandler before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    made_ = std::make_unique<QGuiApplication>(count_, words_);
    qInstallMessageHandler(before);
  }

 private:
  char name_[11] = "tarvolinex", option_[10] = "-platform", platform_[32] = "minimal:enable_fonts:fontconfig";
  char* words_[4] = {name_, option_, platform_, nullptr};
  int count_ = 3;
  std::unique_ptr<QGuiApplication> made_;
};

// As fine as the number of pages allows: the coordinates of the last one have to be numbers that such a file may hold.
bool Paint(const RichDocument& document, QPdfWriter& writer) {
  constexpr double kLargest = 32767;
  for (const int pointsAnInch : {600, 150, 36}) {
    writer.setResolution(pointsAnInch);
    PaintedPages pages(document, writer);
    if (pages.Height() <= kLargest || pointsAnInch == 36) return pages.Paint();
  }
  return false;
}

}  // namespace

std::string PdfBytes(const RichDocument& document) {
  const SomeApplication application;
  if (QFontDatabase::families().isEmpty()) {
    throw RuntimeError(kItemNotFound, Tr("There is no font on this machine to write a document with"));
  }
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    writer.setTitle(QString::fromStdString(document.title));
    writer.setCreator("Tarvolinex");
    if (!Paint(document, writer)) throw RuntimeError(kDeviceError, Tr("The document cannot be painted"));
  }
  return WithAuthorAndLanguage(buffer.data().toStdString(), document.author, document.language);
}

void WritePdf(const RichDocument& document, std::string_view path) {
  WriteFile(path, PdfBytes(document));
}

}  // namespace tarvolinex
