// The texts of the designs, and the toolkit's own, in the user's language.
#pragma once

#include <QTranslator>

namespace tarvolinex {

// Asks the program's translations for the texts that the toolkit looks up.
class Translator : public QTranslator {
 public:
  using QTranslator::QTranslator;
  QString translate(const char* context, const char* text, const char* disambiguation, int number) const override;
  bool isEmpty() const override { return false; }
};

// Installs it, and the toolkit's translations where they are there: only with translations of ours, so that one window
// does not speak two languages. Call it after the application object has been made.
void TranslateDesigns();

}  // namespace tarvolinex
