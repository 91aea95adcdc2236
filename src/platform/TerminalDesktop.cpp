#include "platform/TerminalDesktop.h"

#include <iostream>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tarvolinex {

Answer TerminalDesktop::MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon) {
  std::cerr << (title.empty() ? "" : title + ": ") << ReplaceAll(text, "\r\n", "\n") << '\n';
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
  std::cerr << NativePath(file) << '\n';
  constexpr int kDone = 33;
  return kDone;
}

int TerminalDesktop::OpenWith(const std::string& file) {
  return ShellExecute("open", file, "", "", kShowNormal);
}

void TerminalDesktop::Note(const std::string& text) {
  std::cerr << text << '\n';
}

}  // namespace tarvolinex
