// The reporter of work on many suppliers: it shows the work in its window, with the time that is left.
#pragma once

#include <chrono>
#include <string>

#include "controls/Desktop.h"
#include "platform/text/Translation.h"
#include "ui/batch/FrmBatch.h"

namespace tarvolinex {

// The window's buttons are blocked while it lives.
class FrmBatch::Progress final : public Reporter {
 public:
  explicit Progress(FrmBatch& window) : window_(window) { window_.Block(true); }
  ~Progress() override { window_.Block(false); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  void ShowError(std::string_view message, bool fatal) override { window_.run_.ShowError(message, fatal); }
  void SetStatus(bool, std::string_view text, int progress) override {
    if (progress >= 0) {
      window_.BarProgress.SetValue(progress);
      window_.LblProgress.SetCaption(CaptionOf(std::string(text) + Left(progress)));
    }
    DoEvents();
  }
  void ShowReason(const std::string& reason) override { window_.run_.ShowReason(reason); }
  void ShowDetail(const std::string& reason) override { window_.run_.ShowDetail(reason); }
  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override {
    return window_.run_.MessageBox(text, title, buttons, icon);
  }
  void DoEvents() override { TheDesktop().DoEvents(); }
  void Repaint() override { TheDesktop().Repaint(); }
  bool Stopped() const override { return window_.stop_; }
  bool Paused() const override { return window_.paused_; }
  std::chrono::system_clock::time_point Now() const override { return TheDesktop().Now(); }

 private:
  std::string Left(int progress) const {
    constexpr int kTooSoon = 5, kWhole = 100, kMinute = 60;
    const auto gone =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - began_).count();
    if (progress < kTooSoon || gone == 0) return {};
    const auto left = gone * (kWhole - progress) / progress;
    return left >= kMinute ? Tr(" - %1 minutes left", {std::to_string((left + kMinute - 1) / kMinute)})
                           : Tr(" - %1 seconds left", {std::to_string(left)});
  }
  FrmBatch& window_;
  const std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

}  // namespace tarvolinex
