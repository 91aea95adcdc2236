// A reporter for work that nobody watches: it collects what it is told.
#pragma once

#include <string>
#include <string_view>

#include "core/Reports.h"

namespace tarvolinex {

// Questions are answered with yes: whoever starts such work has agreed to all of it. A fatal report throws
// RuntimeError.
class Unattended final : public Reporter {
 public:
  explicit Unattended(std::chrono::system_clock::time_point now) : now_(now) {}
  std::string Reports() const { return reports_; }    // failures
  std::string Warnings() const { return warnings_; }  // what was told besides

  void ShowError(std::string_view message, bool fatal) override;
  void SetStatus(bool, std::string_view, int) override {}
  void ShowReason(const std::string&) override {}
  void ShowDetail(const std::string& reason) override;
  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override;
  void DoEvents() override {}
  void Repaint() override {}
  bool Stopped() const override { return false; }
  std::chrono::system_clock::time_point Now() const override { return now_; }

 private:
  std::chrono::system_clock::time_point now_;
  std::string reports_, warnings_;
};

}  // namespace tarvolinex
