// One run of the program: its folders, the organisation's preferences, and whom it tells what happens. Whoever starts
// the run owns it and hands it down; the floors below the windows and commands are given values of it.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>

#include "core/Aliases.h"
#include "core/Folders.h"
#include "core/Records.h"
#include "core/Reports.h"

namespace tarvolinex {

class Run final : public Reporter {
 public:
  // Without a trailing separator; a path is built by appending a name that starts with "\".
  std::string AppFolder;   // the program's folder
  std::string DataFolder;  // the folder of the database file
  // The connection string of a database on a server, without its password; empty = the file in the data folder, which
  // holds this desk's pages and pictures either way.
  std::string SharedDatabase;
  // The data folder that this run was started with; empty = the remembered one.
  std::string ChosenDataFolder;
  // The folder that every preview and every send builds anew; ends with "\".
  std::string CalculatorFolder() const { return AppFolder + "\\calculator\\"; }
  Folders Places() const { return {AppFolder, DataFolder, CalculatorFolder()}; }

  std::string WebServer;          // host of the maker's web server
  std::string CustomerReference;  // a whole number, as text
  // For uploads: a secret that stood in the server's name, the command that prints it, certificates to trust.
  std::string WebSecret, WebSecretCommand, WebCaFile;

  CalculatorPreferencesRecord CalculatorPreferences;
  SupplierCalcSettingsRecord SupplierCalcSettings;  // of the supplier in hand

  // Whether this run writes into the app folder. Another program may be doing that while a command works beside it.
  bool KeepsAppFolder = true;

  // Set by every error report, cleared when the main window starts loading; while it is set, closing the main window
  // does not save pending edits.
  bool ErrorShown = false;
  // The user's wish to stop what is being built or sent.
  std::atomic<bool> StopRequested = false;

  Words OwnWords() const { return {CalculatorPreferences, SupplierCalcSettings}; }
  std::string ReplaceAliases(std::string_view text) const { return tarvolinex::ReplaceAliases(text, OwnWords()); }
  std::string CaptionWithAliases(std::string_view caption) const {
    return tarvolinex::CaptionWithAliases(caption, OwnWords());
  }

  // The status line of the run's window, set by the window while it lives.
  struct StatusLine {
    std::function<void(bool flashing, std::string_view text, int progress)> show;
    std::function<void(std::string_view reason)> reason;
    std::function<void(std::string_view text, bool correction)> note;
  };
  StatusLine Line;
  // What the status line reads while nothing goes on, until the next one; empty = nothing. A correction of what was
  // typed is told once more beside the save that stores it.
  void SetNote(std::string_view text, bool correction = false);

  void ShowError(std::string_view message, bool fatal = false) override;
  void SetStatus(bool flashing, std::string_view text, int progress) override;
  void ShowReason(const std::string& reason) override;
  void ShowDetail(const std::string& reason) override;
  Answer MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) override;
  void DoEvents() override;
  void Repaint() override;
  bool Stopped() const override { return StopRequested; }
  std::chrono::system_clock::time_point Now() const override;
};

}  // namespace tarvolinex
