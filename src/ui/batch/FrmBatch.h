// Calculators of many suppliers in one go: published, packed, or sent.
#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "distribute/SendLetters.h"

namespace tarvolinex {

// Indexes of FrmBatch::OpWhat and FrmBatch::CmdTick.
enum BatchWhat { kBatchPublish = 0, kBatchPack = 1, kBatchSend = 2 };
// Indexes of FrmBatch::CboTo.
enum BatchTo { kToAll = 0, kToLast = 1, kToChosen = 2 };
enum BatchTick { kTickAll = 0, kTickStale = 1, kTickNever = 2, kTickFound = 3, kTickNone = 4 };

class FrmBatch : public Window {
 public:
  // found: the suppliers that the main window's filter shows.
  FrmBatch(Run& run, Database& database, const Branding& branding, const WebAccount& web, std::set<int> found);

  ControlArray<CommandButton> CmdTick;
  ListView LvwWho;  // ticked ones are worked on
  ControlArray<OptionButton> OpWhat;
  Label LblAs;
  ComboBox CboAs;  // item data: the send type, or kAsLast
  Label LblFolder;
  TextBox TxtFolder;
  CommandButton CmdBrowse;
  Label LblTo;
  ComboBox CboTo;           // BatchTo
  CommandButton CmdChoose;  // the contacts of kToChosen
  Label LblSubject, LblMessage;
  TextBox TxtSubject, TxtMessage;
  CheckBox ChkInstructions;
  Label LblPerMinute;
  TextBox TxtPerMinute;
  Label LblReport;
  ListView LvwReport;
  Label LblProgress;
  ProgressBar BarProgress;
  CommandButton CmdTry, CmdGo, CmdPause, CmdStop, CmdSave, CmdClose;

  // As each contact had it the last time, who has had none as a zip file.
  static constexpr int kAsLast = 3;

  // Run before the window is shown.
  void Load();

 private:
  class Progress;
  void Wire();
  void Tick(int which);
  void ShowChoices();
  void Browse();
  void ChooseReaders();
  void Pause(bool paused);
  std::vector<BatchJob> TickedJobs();
  LetterOrder Order() const;
  int PerMinute() const;
  bool MayBegin();
  void Try();
  void Go();
  void Make();
  // None: goes on with the last run.
  void Send(const std::vector<Letter>* fresh);
  void ShowStandings();
  void ShowStanding(const Standing& standing, bool ticked);
  void CountLeft();
  void ShowGo();
  bool GoesOn() const;
  void ShowLetters();
  void ShowReport(const std::vector<std::vector<std::string>>& rows);
  void Block(bool working);
  void Remember() const;

  Run& run_;
  Database& database_;
  const Branding branding_;
  const WebAccount web_;
  const std::set<int> found_;
  std::set<int> stale_, never_;
  int left_ = 0;  // letters of the last run
  struct Wording {
    std::string subject, message;
  };
  Wording waiting_;             // of the letters that are left
  std::optional<Wording> own_;  // what the user has typed, while they are shown
  bool working_ = false, stop_ = false, paused_ = false;
  std::set<int> readers_;  // contacts that were chosen
  std::string report_;     // as CSV, with its heading
};

}  // namespace tarvolinex
