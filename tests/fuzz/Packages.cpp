// Archives, icons, and the install file that is made of them.
#include <filesystem>

#include "fuzz/Targets.h"
#include "platform/files/Files.h"
#include "platform/files/Pictures.h"
#include "platform/files/SelfExtractor.h"
#include "platform/files/ZipComponent.h"
#include "selfextract/Container.h"
#include "ui/iconedit/IconFile.h"

namespace tarvolinex::fuzz {

namespace {

void ReadZip(std::string_view bytes) {
  ZipComponent zip;
  zip.ZipFileName = Put("in.zip", bytes);
  zip.UnzipToFolder = Scratch() + "/out/in/here";
  MakeFolder(zip.UnzipToFolder);
  Works([&] { zip.Unzip(); });
  for (const char* folder : {"/out", "/out/in"}) {
    const std::filesystem::directory_iterator inside(Scratch() + folder);
    Expect(std::distance(begin(inside), end(inside)) == 1, "nothing is unpacked outside the folder");
  }
  std::filesystem::remove_all(Scratch() + "/out");
}

void ReadIcon(std::string_view bytes) {
  const std::string path = Put("icon.ico", bytes);
  Works([&] { LoadPicture(path); });
  IconImage image;
  if (!Works([&] { image = LoadIcon(path); })) return;
  const std::string written = IconBytes(image);
  Expect(IconBytes(LoadIcon(Put("icon.ico", written))) == written, "an icon is read as it was written");
}

// The least that a program is: its headers and one section.
std::string Module() {
  std::string module(256, '\0');
  const auto set = [&](std::size_t offset, std::string_view with) { module.replace(offset, with.size(), with); };
  set(0, "MZ");
  set(0x3C, "\x40");
  set(64, "PE");
  set(64 + 6, "\x01");
  set(64 + 20, "\x02");
  set(64 + 24, "\x0B\x02");
  set(64 + 26 + 16, std::string_view("\0\x01", 2));
  return module;
}

// As each of the three files that an install file is made of.
void MakeInstallFile(std::string_view bytes) {
  const std::string path = Put("given", bytes), module = Put("module", Module()), target = Scratch() + "/made.exe";
  const std::string archive = Put("empty.zip", std::string("PK\5\6") + std::string(18, '\0'));
  Works([&] { WriteSelfExtractor({"T", "%t", ""}, module, path, archive, target); });
  for (const auto& files : {std::pair(path, archive), std::pair(module, path)}) {
    if (!Works([&] { WriteSelfExtractor({"T", "%t", ""}, files.first, "", files.second, target); })) continue;
    const windows::InputFile file(std::filesystem::path(target).wstring());
    Expect(windows::ReadContainer(file).title == L"T", "the self-extractor reads what the program writes");
  }
}

}  // namespace

std::vector<Target> PackageTargets() {
  return {{"zip", ReadZip}, {"icon", ReadIcon}, {"installfile", MakeInstallFile}};
}

}  // namespace tarvolinex::fuzz
