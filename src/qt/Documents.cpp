#include "qt/Documents.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

#include "platform/Files.h"
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

}  // namespace

int OpenDocument(const std::string& file, const std::string& parameters, const std::string& folder) {
  const QString text = Shown(file);
  if (IsAddress(text)) return Result(QDesktopServices::openUrl(AddressOf(text)));
  const QStringList arguments = QProcess::splitCommand(Shown(parameters));
  const QFileInfo info(Shown(NativePath(file)));
  if (!info.exists()) {
    const QString program = IsName(text) ? QStandardPaths::findExecutable(text) : QString();
    return program.isEmpty() ? kMissing : Result(Start(program, arguments, folder));
  }
  if (IsProgram(info)) return Result(Start(info.absoluteFilePath(), arguments, folder));
  return Result(QDesktopServices::openUrl(QUrl::fromLocalFile(info.absoluteFilePath())));
}

int OpenDocumentWith(QWidget* parent, const std::string& file) {
  const QFileInfo info(Shown(NativePath(file)));
  if (!info.exists()) return kMissing;
  const std::string program = AskFile(parent, {"Open With", "/usr/bin", "", "All files (*.*)|*.*"}, false);
  if (program.empty()) return kOpened;
  return Result(Start(Shown(program), {info.absoluteFilePath()}, {}));
}

}  // namespace tarvolinex
