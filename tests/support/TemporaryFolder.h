// A folder of a test's own, which goes with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace tarvolinex {

class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::filesystem::path& in = std::filesystem::temp_directory_path()) {
    std::string name = (in / "tarvolinex-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // Where there is one, a memory disk: nothing in it has to last.
  static std::filesystem::path Quick() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }
  const std::string& Path() const { return path_; }
  std::string File(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(path_ + "/" + name).parent_path());
    std::ofstream(path_ + "/" + name, std::ios::binary) << bytes;
    return path_ + "/" + name;
  }

 private:
  std::string path_;
};

}  // namespace tarvolinex
