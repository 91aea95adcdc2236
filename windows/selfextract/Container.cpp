#include "selfextract/Container.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "system/Failure.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr char kMarker[17] = "TARVOLINEX-SFX1";  // 16 bytes with its final zero
constexpr std::size_t kMarkerSize = 16;
constexpr std::uint32_t kLongestSettings = 65536;

template <typename Header>
Header Read(const InputFile& file, std::uint64_t offset) {
  Header header;
  file.ReadAt(offset, &header, sizeof header);
  return header;
}

// The end of the last section's bytes.
std::uint64_t EndOfProgram(const InputFile& file) {
  const auto start = Read<IMAGE_DOS_HEADER>(file, 0);
  const auto headers = static_cast<std::uint64_t>(start.e_lfanew);
  const auto program = Read<IMAGE_NT_HEADERS64>(file, headers);
  const std::uint64_t sections =
      headers + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + program.FileHeader.SizeOfOptionalHeader;
  std::uint64_t end = 0;
  for (unsigned i = 0; i < program.FileHeader.NumberOfSections; ++i) {
    const auto section = Read<IMAGE_SECTION_HEADER>(file, sections + i * sizeof(IMAGE_SECTION_HEADER));
    end = std::max(end, std::uint64_t{section.PointerToRawData} + section.SizeOfRawData);
  }
  return end;
}

[[noreturn]] void Refuse(const InputFile& file, const wchar_t* what) {
  throw Failure{L"The settings in " + file.Path() + L" " + what};
}

void ReadSettings(const InputFile& file, std::string_view bytes, Container& container) {
  std::wstring text, folder, command;
  if (!Decode(bytes, kUtf8, text)) Refuse(file, L"are no text.");
  for (const std::wstring& line : Lines(text)) {
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring::npos) continue;
    const std::wstring key = line.substr(0, equals), value = line.substr(equals + 1);
    if (key == L"Title") container.title = Squeezed(value);
    if (key == L"Folder") folder = value;
    if (key == L"Command") command = value;
  }
  if (folder != L"%t") Refuse(file, L"name a folder other than \"%t\".");
  if (command.empty()) return;
  container.command = command.substr(std::min<std::size_t>(3, command.size()));
  if (!command.starts_with(L"%t\\") || !IsPlainName(container.command)) {
    Refuse(file, L"start something other than a file in \"%t\".");
  }
}

}  // namespace

Container ReadContainer(const InputFile& file) {
  const std::uint64_t marker = EndOfProgram(file);
  if (marker == file.Size()) throw Failure{file.Path() + L" holds no archive."};
  const std::string found = file.ReadAt(marker, kMarkerSize);
  if (std::memcmp(found.data(), kMarker, kMarkerSize) != 0) throw Failure{file.Path() + L" holds no archive."};
  const auto settings_size = Read<std::uint32_t>(file, marker + kMarkerSize);
  Container container;
  container.archive_size = Read<std::uint32_t>(file, marker + kMarkerSize + 4);
  const std::uint64_t settings = marker + kMarkerSize + 8;
  if (settings_size > kLongestSettings) Refuse(file, L"are too long.");
  container.archive = settings + settings_size;
  if (container.archive + container.archive_size > file.Size()) {
    throw Failure{file.Path() + L" is incomplete. Please fetch it again."};
  }
  ReadSettings(file, file.ReadAt(settings, settings_size), container);
  return container;
}

}  // namespace tarvolinex::windows
