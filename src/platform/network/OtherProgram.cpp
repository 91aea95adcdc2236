#include "platform/network/OtherProgram.h"

#include <QProcess>

#include "platform/RuntimeError.h"
#include "platform/text/Encoding.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

std::string SaidBy(std::string_view bytes) {
  constexpr std::size_t kLongest = 500;
  return QString::fromStdString(Readable(bytes, kLongest)).trimmed().toStdString();
}

std::string RunProgram(const OtherProgram& program, const std::string& input, const TransferProgress& progress,
                       const TransferPatience& patience, ProgramEnd* end) {
  constexpr int kPause = 30;
  QProcess process;
  QStringList arguments;
  for (const std::string& argument : program.arguments) arguments << QString::fromStdString(argument);
  process.start(QString::fromStdString(program.path), arguments);
  if (!process.waitForStarted()) throw RuntimeError(program.error, Tr("%1 cannot be started", {program.name}));
  if (end) end->started = true;
  const auto fail = [&](const std::string& why) {
    process.kill();
    process.waitForFinished();
    throw RuntimeError(program.error, why);
  };
  QByteArray printed, complaints;
  process.write(input.data(), static_cast<qint64>(input.size()));
  process.closeWriteChannel();
  const auto total = static_cast<std::int64_t>(input.size());
  auto taken = std::chrono::steady_clock::now();
  qint64 left = process.bytesToWrite();
  for (bool runs = true; runs;) {
    runs = !process.waitForFinished(kPause) && process.state() != QProcess::NotRunning;
    printed += process.readAllStandardOutput();
    complaints += process.readAllStandardError();
    if (printed.size() + complaints.size() > program.longestOutput) fail(Tr("%1 prints without end", {program.name}));
    const auto now = std::chrono::steady_clock::now();
    if (process.bytesToWrite() != left) taken = now;
    left = process.bytesToWrite();
    if (!runs) break;
    if (now - taken > (left > 0 ? patience.silent : program.ending)) fail(Tr("%1 took too long", {program.name}));
    if (progress && !progress(total - left, total)) fail(Tr("%1 was stopped", {program.name}));
  }
  if (end && process.exitStatus() == QProcess::NormalExit) end->exitCode = process.exitCode();
  if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
    throw RuntimeError(program.error, Tr("%1 failed: %2", {program.name, SaidBy(complaints.toStdString())}));
  }
  return printed.toStdString();
}

std::string PasswordPrintedBy(const std::string& command, const TransferProgress& progress,
                              const TransferPatience& patience) {
  const std::string output =
      RunProgram({Tr("The password command"), "/bin/sh", {"-c", command}, kMailLoginRefused, patience.silent}, "",
                 progress, patience);
  return output.substr(0, output.find_first_of("\r\n"));
}

}  // namespace tarvolinex
