#include "qt/Dialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "qt/EventBoundary.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

// The program may end while a dialog waits: the handler that asked ends too.
template <typename Dialog>
int Ask(Dialog& dialog) {
  ThrowIfEnded();
  const int result = dialog.exec();
  ThrowIfEnded();
  return result;
}

QString ShownLines(const std::string& text) {
  return Shown(text).replace("\r\n", "\n");
}

QMessageBox::Icon QtIcon(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Critical:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

void SetFolder(QFileDialog& dialog, const std::string& folder) {
  if (!folder.empty()) dialog.setDirectory(Shown(NativePath(folder)));
}

std::string Chosen(QFileDialog& dialog) {
  if (Ask(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return Held(dialog.selectedFiles().constFirst());
}

}  // namespace

Answer AskMessage(QWidget* parent, const std::string& text, const std::string& title, BoxButtons buttons,
                  BoxIcon icon) {
  QMessageBox box(parent);
  box.setTextFormat(Qt::PlainText);
  box.setText(ShownLines(text));
  box.setWindowTitle(Shown(title));
  box.setIcon(QtIcon(icon));
  switch (buttons) {
    case BoxButtons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      break;
    case BoxButtons::OkCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      break;
    case BoxButtons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      // A warning is not agreed to by the key that was meant for something else.
      if (icon == BoxIcon::Exclamation) box.setDefaultButton(QMessageBox::No);
      break;
    case BoxButtons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      break;
  }
  switch (Ask(box)) {
    case QMessageBox::Cancel:
      return Answer::Cancel;
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    default:
      return Answer::Ok;
  }
}

std::optional<std::string> AskText(QWidget* parent, const std::string& prompt, const std::string& title,
                                   const std::string& initial) {
  QInputDialog dialog(parent);
  dialog.setWindowTitle(Shown(title));
  dialog.setLabelText(ShownLines(prompt));
  dialog.setTextValue(Shown(initial));
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  if (Ask(dialog) != QDialog::Accepted) return std::nullopt;
  return Held(dialog.textValue());
}

std::string AskFile(QWidget* parent, const FileDialog& dialog, bool save) {
  QFileDialog box(parent, Shown(dialog.title));
  box.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  box.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  box.setOption(QFileDialog::DontConfirmOverwrite);
  SetFolder(box, dialog.folder);
  if (const QStringList filters = NameFilters(dialog.filter); !filters.isEmpty()) box.setNameFilters(filters);
  if (!dialog.fileName.empty()) box.selectFile(Shown(FileNameOf(dialog.fileName)));
  return Chosen(box);
}

std::string AskFolder(QWidget* parent, const std::string& title, const std::string& startFolder) {
  QFileDialog box(parent, Shown(title));
  box.setFileMode(QFileDialog::Directory);
  box.setOption(QFileDialog::ShowDirsOnly);
  SetFolder(box, startFolder);
  return Chosen(box);
}

std::optional<Colour> AskColour(QWidget* parent, Colour initial) {
  QColorDialog box(ToQColor(initial), parent);
  if (Ask(box) != QDialog::Accepted) return std::nullopt;
  return FromQColor(box.selectedColor());
}

QStringList NameFilters(const std::string& filter) {
  static const QRegularExpression patternsAtEnd("\\s*\\([^()]*\\*[^()]*\\)\\s*$");
  const std::vector<std::string_view> parts = Split(filter, '|');
  QStringList filters;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    QString description = Shown(parts[i]);
    description.remove(patternsAtEnd);
    QStringList patterns = Shown(parts[i + 1]).split(';', Qt::SkipEmptyParts);
    for (QString& pattern : patterns) pattern = pattern.trimmed() == "*.*" ? QString("*") : pattern.trimmed();
    filters << QString("%1 (%2)").arg(description, patterns.join(' '));
  }
  return filters;
}

}  // namespace tarvolinex
