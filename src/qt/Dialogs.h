// The boxes and dialogs of the desktop. Each waits for the user's answer.
#pragma once

#include <QStringList>
#include <optional>
#include <string>

#include "controls/Desktop.h"

class QWidget;

namespace tarvolinex {

// All texts are shown letter for letter. parent may be null.
Answer AskMessage(QWidget* parent, const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon);
std::optional<std::string> AskText(QWidget* parent, const std::string& prompt, const std::string& title,
                                   const std::string& initial);
// The chosen path, empty when cancelled. A file to open must exist; nothing is asked about one to save.
std::string AskFile(QWidget* parent, const FileDialog& dialog, bool save);
std::string AskFolder(QWidget* parent, const std::string& title, const std::string& startFolder);
std::optional<Colour> AskColour(QWidget* parent, Colour initial);

// "Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*" gives "Pages (*.htm *.html)" and "All files (*)".
QStringList NameFilters(const std::string& filter);

}  // namespace tarvolinex
