// Small files that are there whole or not at all, whoever reads meanwhile and whatever ends the writer.
#pragma once

#include <string>
#include <string_view>

namespace tarvolinex::server {

// In place of what stands there, with its owner and rights; a new one gets the folder's group and is readable for it.
// Throws RuntimeError.
void WriteWholeText(const std::string& path, std::string_view text);

// A new one. False when there is one of that name already, which stays as it is. Throws RuntimeError.
bool MakeWholeText(const std::string& path, std::string_view text);

// The file with these bytes, on the disk when it returns. Throws RuntimeError.
void WriteFlushed(const std::string& path, std::string_view bytes);
void FlushFolder(const std::string& folder);

}  // namespace tarvolinex::server
