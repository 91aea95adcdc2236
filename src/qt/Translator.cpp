#include "qt/Translator.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include "platform/text/Translation.h"
#include "qt/Look.h"

namespace tarvolinex {

QString Translator::translate(const char*, const char* text, const char*, int) const {
  const std::string own = Tr(text);
  return own == text ? QString() : Shown(own);
}

void TranslateDesigns() {
  if (!HasTranslations()) return;
  auto* toolkit = new QTranslator(qApp);
  if (toolkit->load(QLocale(), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(toolkit);
  }
  QCoreApplication::installTranslator(new Translator(qApp));
}

}  // namespace tarvolinex
