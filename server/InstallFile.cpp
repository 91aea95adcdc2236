#include "server/InstallFile.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "platform/files/Files.h"
#include "platform/files/SelfExtractor.h"
#include "platform/text/Text.h"
#include "selfextract/Archive.h"
#include "server/CalculatorFiles.h"
#include "server/Refusal.h"
#include "system/Failure.h"
#include "system/Text.h"

namespace tarvolinex::server {

namespace {

using windows::Archive, windows::Container, windows::Entry, windows::InputFile;

constexpr std::size_t kMostEntries = 500;

bool IsOurProgram(std::string_view bytes, const std::string& known) {
  const auto modules = ListFiles(known + "/*.bin");
  return std::any_of(modules.begin(), modules.end(),
                     [&](const std::string& module) { return BeginsWithModule(bytes, known + "/" + module); });
}

void CheckContainer(const InputFile& file, const Container& container) {
  if (container.archive + container.archive_size != file.Size()) {
    throw Refusal{"The install file has something behind its archive."};
  }
  if (!container.command.empty() && !windows::SameName(container.command, L"setup.exe")) {
    throw Refusal{"The install file would start a program."};
  }
  // Counted before the directory is read, which compares each name with each other.
  constexpr std::uint64_t kEndSize = 22, kCountOffset = 10;
  if (container.archive_size < kEndSize) throw Refusal{"The install file holds no archive."};
  const std::string count = file.ReadAt(file.Size() - kEndSize + kCountOffset, 2);
  if (static_cast<unsigned char>(count[0]) + 256U * static_cast<unsigned char>(count[1]) > kMostEntries) {
    throw Refusal{"The install file holds too many files."};
  }
}

std::map<std::string, PageFile> Unpacked(const InputFile& file, const Demands& demands) {
  const Container container = windows::ReadContainer(file);
  CheckContainer(file, container);
  const Archive archive(file, container);
  for (const Entry& entry : archive.Entries()) {
    const std::string name = windows::ToUtf8(entry.name);
    if (!IsCalculatorFile(name)) throw Refusal{"\"" + name + "\" is no file of a calculator."};
  }
  if (archive.UnpackedSize() > static_cast<std::uint64_t>(demands.unpacked)) {
    throw Refusal{"The calculator is larger, unpacked, than this server takes."};
  }
  std::map<std::string, PageFile> files;
  for (const Entry& entry : archive.Entries()) {
    const std::string name = windows::ToUtf8(entry.name);
    PageFile& part = files[FoldCase(name)];
    part.name = name;
    part.bytes.reserve(entry.size);
    archive.Unpack(entry, [&](std::string_view piece) { part.bytes += piece; });
  }
  return files;
}

}  // namespace

CheckedCalculator CheckInstallFile(const std::string& path, std::string_view bytes, const Demands& demands) {
  if (!IsOurProgram(bytes, demands.known)) {
    throw Refusal{"The file does not begin with a self-extractor that this server knows."};
  }
  try {
    const InputFile file(std::filesystem::path(path).wstring());
    return CheckCalculatorFiles(Unpacked(file, demands), demands.known);
  } catch (const windows::Failure& failure) {
    throw Refusal{ReplaceAll(windows::ToUtf8(failure.message), path, "the install file")};
  }
}

}  // namespace tarvolinex::server
