#include "platform/ZipComponent.h"

#include <zip.h>

#include <memory>

#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace tarvolinex {

namespace {

struct Discard {
  void operator()(zip_t* archive) const { zip_discard(archive); }
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using Archive = std::unique_ptr<zip_t, Discard>;
using ArchivedFile = std::unique_ptr<zip_file_t, Discard>;

std::string ErrorText(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string text = zip_error_strerror(&error);
  zip_error_fini(&error);
  return text;
}

Archive OpenArchive(const std::string& path) {
  int code = 0;
  Archive archive(zip_open(NativePath(path).c_str(), ZIP_RDONLY, &code));
  if (!archive) throw RuntimeError(kBadArchive, "Unpacking " + path + ": " + ErrorText(code));
  return archive;
}

// A name that stays inside the folder: no drive, no root, no step upwards.
bool StaysInside(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.find(':') != std::string_view::npos ||
      name.find('\\') != std::string_view::npos) {
    return false;
  }
  for (const std::string_view part : Split(name, '/')) {
    if (part == "..") return false;
  }
  return true;
}

std::vector<std::string> EntryNames(zip_t* archive, const std::string& path) {
  std::vector<std::string> names;
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    const char* name = zip_get_name(archive, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS);
    if (!name || !StaysInside(name)) {
      throw RuntimeError(kBadArchive, "Unpacking " + path + ": refused the entry " + (name ? name : "without a name"));
    }
    names.emplace_back(name);
  }
  return names;
}

void ExtractEntry(zip_t* archive, zip_uint64_t index, const std::string& target, const std::string& path) {
  const ArchivedFile entry(zip_fopen_index(archive, index, 0));
  if (!entry) throw RuntimeError(kBadArchive, "Unpacking " + path + ": " + zip_strerror(archive));
  MakeFolder(FolderOf(target));
  WholeFile file(target);
  std::string buffer(1 << 16, '\0');
  zip_int64_t count = 0;
  while ((count = zip_fread(entry.get(), buffer.data(), buffer.size())) > 0) {
    file.Write(std::string_view(buffer).substr(0, static_cast<std::size_t>(count)));
  }
  // A wrong check sum shows at the end of the entry.
  if (count < 0) throw RuntimeError(kBadArchive, "Unpacking " + target + ": " + zip_file_strerror(entry.get()));
  file.Commit();
}

bool Excluded(const std::string& name, const std::string& patterns, const std::string& folder) {
  for (std::string_view pattern : Split(patterns, '\n')) {
    if (!pattern.empty() && pattern.back() == '\r') pattern.remove_suffix(1);
    if (pattern.empty()) continue;
    for (const std::string& match : ListFiles(folder + "\\" + std::string(pattern))) {
      if (match == name) return true;
    }
  }
  return false;
}

}  // namespace

void ZipComponent::Unzip() const {
  const Archive archive = OpenArchive(ZipFileName);
  const std::vector<std::string> names = EntryNames(archive.get(), ZipFileName);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string target = UnzipToFolder + "\\" + names[i];
    if (names[i].back() == '/') {
      MakeFolder(target);
    } else {
      ExtractEntry(archive.get(), i, target, ZipFileName);
    }
  }
}

int ZipComponent::Zip() {
  error_.clear();
  const std::string folder = FolderOf(FilesToProcess);
  const std::string beside = NativePath(ZipFileName) + ".tmp";
  int code = 0;
  Archive archive(zip_open(beside.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
  if (!archive) {
    error_ = ErrorText(code);
    return code;
  }
  for (const std::string& name : ListFiles(FilesToProcess)) {
    if (Excluded(name, FilesToExclude, folder)) continue;
    zip_source_t* source = zip_source_file(archive.get(), NativePath(folder + "\\" + name).c_str(), 0, -1);
    const zip_int64_t entry = source ? zip_file_add(archive.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (entry < 0) {
      zip_source_free(source);
      error_ = name + ": " + zip_strerror(archive.get());
      return ZIP_ER_INTERNAL;
    }
    zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(entry), ZIP_CM_DEFLATE,
                             static_cast<zip_uint32_t>(CompressionLevel));
  }
  if (zip_close(archive.get()) != 0) {
    error_ = zip_strerror(archive.get());
    return ZIP_ER_WRITE;
  }
  static_cast<void>(archive.release());
  try {
    WriteFile(ZipFileName, ReadFile(beside));
    DeleteFile(beside);
  } catch (const RuntimeError& failure) {
    error_ = failure.Description();
    return ZIP_ER_WRITE;
  }
  return 0;
}

}  // namespace tarvolinex
