#include "qt/Documents.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "qt/Dialogs.h"
#include "qt/Look.h"

namespace tarvolinex {

namespace {

constexpr int kOpened = 33, kMissing = 2, kNoProgram = 31;

int Result(bool opened) {
  return opened ? kOpened : kNoProgram;
}

// Two letters at least: one letter before the colon is a drive.
bool IsAddress(const QString& text) {
  static const QRegularExpression scheme("^[A-Za-z][A-Za-z0-9+.-]+:");
  return scheme.match(text).hasMatch();
}

// As browsers read an address: backslashes before the query are slashes, blanks are escaped.
QUrl AddressOf(QString text) {
  const qsizetype query = text.indexOf('?');
  for (qsizetype i = 0; i < (query < 0 ? text.size() : query); ++i) {
    if (text[i] == '\\') text[i] = '/';
  }
  return QUrl(text, QUrl::TolerantMode);
}

bool IsName(const QString& text) {
  return !text.contains('/') && !text.contains('\\') && !text.contains(':');
}

// A document does not become a program because it lies on a disk that marks every file as one.
bool IsProgram(const QFileInfo& info) {
  if (!info.isFile() || !info.isExecutable()) return false;
  const QMimeType type = QMimeDatabase().mimeTypeForFile(info);
  return type.inherits("application/x-executable") || type.inherits("application/x-sharedlib") ||
         type.inherits("application/x-shellscript");
}

bool Start(const QString& program, const QStringList& arguments, const std::string& folder) {
  return QProcess::startDetached(program, arguments, folder.empty() ? QString() : Shown(NativePath(folder)));
}

// The "Exec" command of the program that the desktop edits plain texts with, without the marks that stand for files;
// empty when the desktop names none, or one that needs a terminal.
QStringList TextEditor() {
  constexpr int kPatience = 3000;  // milliseconds
  QProcess query;
  query.start("xdg-mime", {"query", "default", "text/plain"});
  if (!query.waitForFinished(kPatience)) return {};
  const QString name = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
  const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name);
  QFile entry(path);
  if (name.isEmpty() || !entry.open(QIODevice::ReadOnly)) return {};
  const QString text = QString::fromUtf8(entry.readAll());
  static const QRegularExpression command("^Exec=(.*)$", QRegularExpression::MultilineOption);
  static const QRegularExpression mark("%[a-zA-Z]"), terminal("^Terminal=true", QRegularExpression::MultilineOption);
  if (terminal.match(text).hasMatch()) return {};
  return QProcess::splitCommand(command.match(text).captured(1).remove(mark));
}

}  // namespace

int EditDocument(const std::string& file, const std::string& folder) {
  const QFileInfo info(Shown(NativePath(file)));
  if (!info.exists()) return kMissing;
  QStringList editor = TextEditor();
  if (editor.isEmpty()) return kNoProgram;
  const QString program = editor.takeFirst();
  return Result(Start(program, editor << info.absoluteFilePath(), folder));
}

int OpenDocument(const std::string& file, const std::string& parameters, const std::string& folder) {
  const QString text = Shown(file);
  if (IsAddress(text)) return Result(QDesktopServices::openUrl(AddressOf(text)));
  const QStringList arguments = QProcess::splitCommand(Shown(parameters));
  const QFileInfo info(Shown(NativePath(file)));
  if (!info.exists()) {
    const QString program = IsName(text) ? QStandardPaths::findExecutable(text) : QString();
    // The plain editor of another system; this one has its own.
    if (program.isEmpty() && text == "notepad.exe" && arguments.size() == 1) {
      return EditDocument(Held(arguments.front()), folder);
    }
    return program.isEmpty() ? kMissing : Result(Start(program, arguments, folder));
  }
  if (IsProgram(info)) return Result(Start(info.absoluteFilePath(), arguments, folder));
  return Result(QDesktopServices::openUrl(QUrl::fromLocalFile(info.absoluteFilePath())));
}

int OpenDocumentWith(QWidget* parent, const std::string& file) {
  const QFileInfo info(Shown(NativePath(file)));
  if (!info.exists()) return kMissing;
  const std::string program = AskFile(parent, {Tr("Open With"), "/usr/bin", "", Tr("All files (*.*)|*.*")}, false);
  if (program.empty()) return kOpened;
  return Result(Start(Shown(program), {info.absoluteFilePath()}, {}));
}

}  // namespace tarvolinex
