#include "platform/files/ZipComponent.h"

#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

#include "platform/RuntimeError.h"
#include "platform/files/Deflated.h"
#include "platform/files/Files.h"
#include "platform/files/SelfExtractor.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

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
  if (!archive) throw RuntimeError(kBadArchive, Tr("Unpacking %1: %2", {path, ErrorText(code)}));
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
      throw RuntimeError(kBadArchive, Tr("Unpacking %1: refused the entry %2", {path, name ? name : "?"}));
    }
    names.emplace_back(name);
  }
  return names;
}

void ExtractEntry(zip_t* archive, zip_uint64_t index, const std::string& target, const std::string& path) {
  const ArchivedFile entry(zip_fopen_index(archive, index, 0));
  if (!entry) throw RuntimeError(kBadArchive, Tr("Unpacking %1: %2", {path, zip_strerror(archive)}));
  MakeFolder(FolderOf(target));
  WholeFile file(target);
  std::string buffer(1 << 16, '\0');
  zip_int64_t count = 0;
  while ((count = zip_fread(entry.get(), buffer.data(), buffer.size())) > 0) {
    file.Write(std::string_view(buffer).substr(0, static_cast<std::size_t>(count)));
  }
  // A wrong check sum shows at the end of the entry.
  if (count < 0) throw RuntimeError(kBadArchive, Tr("Unpacking %1: %2", {target, zip_file_strerror(entry.get())}));
  file.Commit();
}

void Exclude(std::set<std::string>& names, const std::string& folder, std::string_view pattern) {
  for (const std::string& match : ListFiles(folder + "\\" + std::string(pattern))) names.insert(match);
}

std::set<std::string> ExcludedNames(const std::string& patterns, const std::string& folder) {
  std::set<std::string> names;
  for (std::string_view pattern : Split(patterns, '\n')) {
    if (!pattern.empty() && pattern.back() == '\r') pattern.remove_suffix(1);
    if (!pattern.empty()) Exclude(names, folder, pattern);
  }
  return names;
}

bool IsTheSameFile(const std::string& one, const std::string& other) {
  std::error_code ignored;
  return std::filesystem::equivalent(NativePath(one), NativePath(other), ignored);
}

// What the library reads of an entry that is deflated already.
class DeflatedSource {
 public:
  DeflatedSource(std::shared_ptr<const Deflated> entry, time_t written) : entry_(std::move(entry)), written_(written) {}

  static zip_int64_t Answer(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto* source = static_cast<DeflatedSource*>(state);
    switch (command) {
      case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
      case ZIP_SOURCE_OPEN:
        source->at_ = 0;
        return 0;
      case ZIP_SOURCE_READ:
        return source->Read(static_cast<char*>(data), length);
      case ZIP_SOURCE_STAT:
        source->Describe(*static_cast<zip_stat_t*>(data));
        return sizeof(zip_stat_t);
      case ZIP_SOURCE_FREE:
        delete source;
        return 0;
      case ZIP_SOURCE_CLOSE:
        return 0;
      default:
        return -1;
    }
  }

 private:
  zip_int64_t Read(char* to, zip_uint64_t most) {
    const std::size_t count = std::min<std::size_t>(most, entry_->bytes.size() - at_);
    std::copy_n(entry_->bytes.data() + at_, count, to);
    at_ += count;
    return static_cast<zip_int64_t>(count);
  }
  void Describe(zip_stat_t& told) const {
    zip_stat_init(&told);
    told.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC | ZIP_STAT_MTIME;
    told.size = entry_->size;
    told.comp_size = entry_->bytes.size();
    told.comp_method = ZIP_CM_DEFLATE;
    told.crc = entry_->check;
    told.mtime = written_;
  }

  std::shared_ptr<const Deflated> entry_;
  time_t written_;
  std::size_t at_ = 0;
};

// Adds the file; says why it could not, or "".
std::string AddFile(zip_t* archive, const std::string& path, const std::string& name, int level) {
  struct stat status = {};
  if (::stat(NativePath(path).c_str(), &status) != 0) return Tr("Packing %1: %2", {name, ErrorText(ZIP_ER_OPEN)});
  auto state = std::make_unique<DeflatedSource>(DeflatedEntry(name, ReadFile(path), level), status.st_mtime);
  zip_source_t* source = zip_source_function(archive, DeflatedSource::Answer, state.get());
  if (source) static_cast<void>(state.release());
  const zip_int64_t entry = source ? zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
  if (entry < 0) {
    zip_source_free(source);
    return Tr("Packing %1: %2", {name, zip_strerror(archive)});
  }
  const auto index = static_cast<zip_uint64_t>(entry);
  zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, static_cast<zip_uint32_t>(level));
  zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, static_cast<zip_uint32_t>(status.st_mode) << 16);
  return {};
}

void ShowPercent(zip_t*, double part, void* progress) {
  constexpr double kWhole = 100;
  (*static_cast<const std::function<void(int)>*>(progress))(static_cast<int>(part * kWhole));
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
  try {
    // The library makes names of its own from the one that it is given.
    const UnfinishedFile beside(ZipFileName);
    const std::string archive = beside.Path() + ".zip";
    const int code = Pack(archive);
    if (code == 0) Finish(archive);
    return code;
  } catch (const RuntimeError& failure) {
    error_ = failure.Description();
    return ZIP_ER_WRITE;
  }
}

bool ZipComponent::IsPlain() const {
  return EndsWithNoCase(ZipFileName, ".zip");
}

int ZipComponent::Pack(const std::string& archivePath) {
  const std::string folder = FolderOf(FilesToProcess);
  std::set<std::string> excluded = ExcludedNames(FilesToExclude, folder);
  if (IsPlain()) {
    for (const char* program : {"setup.exe", "CalcInstall.CAB"}) Exclude(excluded, folder, program);
  }
  int code = 0;
  Archive archive(zip_open(NativePath(archivePath).c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
  if (!archive) {
    error_ = Tr("Writing %1: %2", {ZipFileName, ErrorText(code)});
    return code;
  }
  for (const std::string& name : ListFiles(FilesToProcess)) {
    if (excluded.contains(name) || IsTheSameFile(folder + "\\" + name, ZipFileName)) continue;
    error_ = AddFile(archive.get(), folder + "\\" + name, name, CompressionLevel);
    if (!error_.empty()) return ZIP_ER_INTERNAL;
  }
  if (Progress) zip_register_progress_callback_with_state(archive.get(), 0.01, ShowPercent, nullptr, &Progress);
  if (zip_close(archive.get()) != 0) {
    error_ = Tr("Writing %1: %2", {ZipFileName, zip_strerror(archive.get())});
    return ZIP_ER_WRITE;
  }
  static_cast<void>(archive.release());
  return 0;
}

void ZipComponent::Finish(const std::string& archivePath) const {
  if (IsPlain()) return CopyFile(archivePath, ZipFileName);
  WriteSelfExtractor({SfxTitle, SfxDefaultFolder, SfxCommand}, SfxModule, SfxIcon, archivePath, ZipFileName);
}

}  // namespace tarvolinex
