#include "platform/files/MachineFonts.h"

#include <fontconfig/fontconfig.h>

namespace tarvolinex {

namespace {

// What stands in for a font that is not there comes last.
constexpr const char* kFolders = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
<dir>/usr/share/fonts</dir>
<dir>/usr/local/share/fonts</dir>
<dir prefix="xdg">fonts</dir>
<dir>~/.fonts</dir>
<cachedir>/var/cache/fontconfig</cachedir>
<cachedir prefix="xdg">fontconfig</cachedir>
<match target="pattern">
<edit name="family" mode="append_last"><string>Carlito</string><string>Open Sans</string><string>Liberation Sans</string>
<string>DejaVu Sans</string></edit>
</match>
</fontconfig>
)";

}  // namespace

void UseFontsByName() {
  static bool done = false;
  if (done) return;
  done = true;
  FcConfig* config = FcConfigCreate();
  const auto* folders = reinterpret_cast<const FcChar8*>(kFolders);
  // Without them the toolkit reads the desktop's rules itself.
  if (config && FcConfigParseAndLoadFromMemory(config, folders, FcFalse) && FcConfigBuildFonts(config)) {
    FcConfigSetCurrent(config);
  }
  if (config) FcConfigDestroy(config);  // the current one is kept
}

}  // namespace tarvolinex
