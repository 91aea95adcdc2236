// The files of a calculator, each held to what its name says.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "server/InstallFile.h"

namespace tarvolinex::server {

// Whether a calculator has files of this name, in any case.
bool IsCalculatorFile(std::string_view name);

// Files by their names in lower case, of which each is a calculator's. known: the folder of the page templates. Throws
// Refusal naming the file, and RuntimeError when a template cannot be read.
CheckedCalculator CheckCalculatorFiles(std::map<std::string, PageFile> files, const std::string& known);

// Whether the page is the template with a colour in its head and its last element filled; line ends make no difference.
bool IsPageOf(std::string_view page, std::string_view pageTemplate);

// Whether the text is "window.calcData=", an object in JSON with both records in base64, ";" and nothing else, and
// holds nothing that could end a script.
bool IsCalculatorData(std::string_view text, std::string_view general, std::string_view supplier);

// Whether the bytes begin as a picture of this ending (".gif", ".png", ".bmp", ".jpg") does.
bool IsPicture(std::string_view bytes, std::string_view ending);

}  // namespace tarvolinex::server
