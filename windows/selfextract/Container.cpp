#include "selfextract/Container.h"

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

std::uint32_t Number(const InputFile& file, std::uint64_t offset, std::size_t size) {
  std::uint32_t number = 0;
  file.ReadAt(offset, &number, size);  // little-endian, like the processor
  return number;
}

// The end of the last section's bytes.
std::uint64_t EndOfProgram(const InputFile& file) {
  constexpr std::uint64_t kHeaders = 0x3C, kSectionCount = 6, kOptionalSize = 20, kOptional = 24;
  constexpr std::uint64_t kSectionSize = 40, kRawSize = 16, kRawOffset = 20;
  const std::uint64_t headers = Number(file, kHeaders, 4);
  const std::uint32_t count = Number(file, headers + kSectionCount, 2);
  std::uint64_t section = headers + kOptional + Number(file, headers + kOptionalSize, 2);
  std::uint64_t end = 0;
  for (std::uint32_t i = 0; i < count; ++i, section += kSectionSize) {
    end = std::max(end, std::uint64_t{Number(file, section + kRawOffset, 4)} + Number(file, section + kRawSize, 4));
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
  const auto settings_size = Number(file, marker + kMarkerSize, 4);
  Container container;
  container.archive_size = Number(file, marker + kMarkerSize + 4, 4);
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
