#include "controls/TerminalDesktop.h"

#include <iostream>

#include "platform/files/Files.h"
#include "platform/text/Encoding.h"

namespace tarvolinex {

Answer TerminalDesktop::MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon) {
  std::cerr << Readable(title.empty() ? text : title + ": " + text) << '\n';
  switch (buttons) {
    case BoxButtons::YesNo:
      return yesToAll_ ? Answer::Yes : Answer::No;
    case BoxButtons::YesNoCancel:
      return yesToAll_ ? Answer::Yes : Answer::Cancel;
    case BoxButtons::OkCancel:
      return yesToAll_ ? Answer::Ok : Answer::Cancel;
    case BoxButtons::Ok:
      break;
  }
  return Answer::Ok;
}

int TerminalDesktop::ShellExecute(const std::string&, const std::string& file, const std::string&, const std::string&,
                                  int) {
  std::cerr << Readable(NativePath(file)) << '\n';
  constexpr int kDone = 33;
  return kDone;
}

int TerminalDesktop::OpenWith(const std::string& file) {
  return ShellExecute("open", file, "", "", kShowNormal);
}

void TerminalDesktop::Note(const std::string& text) {
  std::cerr << Readable(text) << '\n';
}

}  // namespace tarvolinex
