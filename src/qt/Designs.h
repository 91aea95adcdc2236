// The designs of the windows.
#pragma once

#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace tarvolinex {

// A new, hidden, unbound widget of the design with the window's name. Throws RuntimeError when there is none.
std::unique_ptr<QWidget> MakeDesign(const std::string& windowName);

// The names of all windows that have a design.
std::vector<std::string> DesignNames();

}  // namespace tarvolinex
