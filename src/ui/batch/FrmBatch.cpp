#include "ui/batch/FrmBatch.h"

#include <algorithm>

#include "calc/InputRules.h"
#include "controls/Desktop.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "exchange/Csv.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Suppliers.h"
#include "ui/batch/BatchProgress.h"
#include "ui/batch/FrmReaders.h"

namespace tarvolinex {

FrmBatch::FrmBatch(Run& run, Database& database, const Branding& branding, const WebAccount& web, std::set<int> found)
    : Window("FrmBatch", run.ReplaceAliases(Tr("All <SUPPLIER>s at Once"))),
      CmdTick(*this, "CmdTick", kTickNone + 1),
      LvwWho(*this, "LvwWho"),
      OpWhat(*this, "OpWhat", kBatchSend + 1),
      LblAs(*this, "LblAs", -1, Tr("&As")),
      CboAs(*this, "CboAs"),
      LblFolder(*this, "LblFolder", -1, Tr("Into the &folder")),
      TxtFolder(*this, "TxtFolder"),
      CmdBrowse(*this, "CmdBrowse", -1, Tr("&Browse...")),
      LblTo(*this, "LblTo", -1, Tr("&To")),
      CboTo(*this, "CboTo"),
      CmdChoose(*this, "CmdChoose", -1, Tr("C&hoose...")),
      LblSubject(*this, "LblSubject", -1, Tr("S&ubject")),
      LblMessage(*this, "LblMessage", -1, Tr("&Message")),
      TxtSubject(*this, "TxtSubject"),
      TxtMessage(*this, "TxtMessage"),
      ChkInstructions(*this, "ChkInstructions", -1, Tr("With &instructions for the reader")),
      LblPerMinute(*this, "LblPerMinute", -1, Tr("At most so many a min&ute; 0 = as fast as they go")),
      TxtPerMinute(*this, "TxtPerMinute"),
      LblReport(*this, "LblReport", -1, Tr("What came of it")),
      LvwReport(*this, "LvwReport"),
      LblProgress(*this, "LblProgress"),
      BarProgress(*this, "BarProgress"),
      CmdTry(*this, "CmdTry", -1, Tr("&Dry Run")),
      CmdGo(*this, "CmdGo", -1, Tr("&Start")),
      CmdPause(*this, "CmdPause", -1, Tr("Paus&e")),
      CmdStop(*this, "CmdStop", -1, Tr("Sto&p")),
      CmdSave(*this, "CmdSave", -1, Tr("Sa&ve Report...")),
      CmdClose(*this, "CmdClose", -1, Tr("C&lose")),
      run_(run),
      database_(database),
      branding_(branding),
      web_(web),
      found_(std::move(found)) {
  const std::string ticks[] = {Tr("All"), Tr("Out of Date"), Tr("Never Sent"), Tr("Found by the Filter"), Tr("None")};
  for (int i = 0; i <= kTickNone; ++i) CmdTick(i).SetCaption(ticks[i]);
  const std::string whats[] = {Tr("Publish folders"), Tr("Make install files"), Tr("Send by e-mail")};
  for (int i = 0; i <= kBatchSend; ++i) OpWhat(i).SetCaption(whats[i]);
  for (const std::string& to :
       {Tr("Every contact with an address"), Tr("Who was sent one before"), Tr("The contacts that you choose")}) {
    CboTo.Add(to);
  }
  CboTo.SetListIndex(0);
  LvwWho.CheckBoxes = true;
  LvwWho.Columns() = {{run.ReplaceAliases(Tr("<SUPPLIER>")), "", 3200},
                      {Tr("State"), "", 1100},
                      {Tr("Last sent"), "", 2300},
                      {Tr("As"), "", 700},
                      {Tr("Changed since"), "", 4300}};
  TxtMessage.SetToolTip(Tr("<FIRSTNAME>, <SUPPLIERNAME> and <CALCNAME> stand for the reader's own"));
  TxtSubject.SetToolTip(TxtMessage.ToolTip());
  Wire();
}

void FrmBatch::Wire() {
  for (int i = 0; i <= kTickNone; ++i) CmdTick(i).Click = [this, i] { Tick(i); };
  for (int i = 0; i <= kBatchSend; ++i) OpWhat(i).Click = [this] { ShowChoices(); };
  CmdBrowse.Click = [this] { Browse(); };
  CmdTry.Click = [this] { Try(); };
  CmdGo.Click = [this] { Go(); };
  CboTo.Click = [this] { CmdChoose.SetEnabled(CboTo.Enabled() && CboTo.ListIndex() == kToChosen); };
  CmdChoose.Click = [this] { ChooseReaders(); };
  CmdPause.Click = [this] { Pause(!paused_); };
  CmdStop.Click = [this] { stop_ = true; };
  CmdSave.Click = [this] {
    const std::string file =
        TheDesktop().SaveFile({Tr("Save the report"), "", "report.csv", Tr("Comma-separated values (*.csv)|*.csv")});
    try {
      if (!file.empty()) WriteFile(file, report_);
    } catch (const RuntimeError& failure) {
      run_.ShowError(failure.Description());
    }
  };
  CmdClose.Click = [this] { Close(); };
  KeyUp = [this](Key key) {
    if (key != Key::Escape) return;
    if (working_)
      stop_ = true;
    else
      Close();
  };
  MayClose = [this] {
    stop_ = true;
    return !working_;
  };
}

void FrmBatch::Load() {
  TxtFolder.SetText(ReadIni(branding_.folders.app, "General", "OPTIONS", "BATCHFOLDER", ""));
  TxtSubject.SetText(ReadIni(branding_.folders.app, "General", "OPTIONS", "BATCHSUBJECT", ""));
  TxtPerMinute.SetText(
      FormatNumberInput(kInputCount, ReadIni(branding_.folders.app, "General", "OPTIONS", "BATCHPERMINUTE", "")));
  CmdTick(kTickFound).SetEnabled(!found_.empty());
  CmdSave.SetEnabled(false);
  CmdPause.SetEnabled(false);
  CmdStop.SetEnabled(false);
  LvwWho.Clear();
  OpWhat(kBatchSend).SetValue(true);
  try {
    ShowStandings();
    Tick(kTickStale);
    CountLeft();
    ShowGo();
    if (left_ > 0) ShowLetters();
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

// What was ticked stays so unless it is done: current since the last look.
void FrmBatch::ShowStandings() {
  std::set<int> ticked;
  for (const ListView::Row& row : LvwWho.Rows()) {
    if (row.checked) ticked.insert(IdOfKey(row.key));
  }
  std::set<int> due = stale_;
  due.insert(never_.begin(), never_.end());
  stale_.clear();
  never_.clear();
  LvwWho.BeginFill();
  LvwWho.Clear();
  try {
    ForEachStanding(database_, branding_, [&](const Standing& each) {
      const bool done = each.state == Currentness::Current && due.contains(each.supplierId);
      ShowStanding(each, ticked.contains(each.supplierId) && !done);
    });
  } catch (const RuntimeError&) {
    LvwWho.EndFill();
    throw;
  }
  LvwWho.EndFill();
  LvwWho.Select(LvwWho.FirstShown());
}

void FrmBatch::ShowStanding(const Standing& standing, bool ticked) {
  const bool stale = standing.state == Currentness::Stale, never = standing.state == Currentness::Never;
  ListView::Row row;
  row.key = "ID" + std::to_string(standing.supplierId);
  row.text = standing.companyName;
  row.cells = {WordsOf(standing.state), standing.lastSent, standing.sentAs, standing.changes};
  row.toolTip = standing.changes;
  row.checked = ticked;
  if (stale) stale_.insert(standing.supplierId);
  if (never) never_.insert(standing.supplierId);
  LvwWho.Add(std::move(row));
}

// Whether the button goes on with what the last run has left.
bool FrmBatch::GoesOn() const {
  return left_ > 0 && OpWhat(kBatchSend).Value();
}

void FrmBatch::CountLeft() {
  left_ = LettersLeft(database_);
  if (left_ == 0) return;
  const std::vector<Letter> letters = Letters(database_);
  const auto waits = std::ranges::find(letters, LetterState::Waiting, &Letter::state);
  if (waits != letters.end()) waiting_ = {waits->subject, waits->message};
}

// What is left goes as it was written: that is what the boxes show meanwhile.
void FrmBatch::ShowGo() {
  const bool goesOn = GoesOn();
  CmdGo.SetCaption(goesOn ? Tr("&Go On") : Tr("&Start"));
  for (TextBox* box : {&TxtSubject, &TxtMessage}) box->SetLocked(goesOn);
  if (goesOn == own_.has_value()) return;
  const Wording next = goesOn ? waiting_ : *own_;
  if (goesOn) own_ = {TxtSubject.Text(), TxtMessage.Text()};
  if (!goesOn) own_.reset();
  TxtSubject.SetText(next.subject);
  TxtMessage.SetText(next.message);
}

void FrmBatch::Tick(int which) {
  for (int row = 0; row < LvwWho.Count(); ++row) {
    const int id = IdOfKey(LvwWho.At(row).key);
    LvwWho.SetChecked(row, which == kTickAll || (which == kTickStale && stale_.contains(id)) ||
                               (which == kTickNever && never_.contains(id)) ||
                               (which == kTickFound && found_.contains(id)));
  }
}

void FrmBatch::ShowChoices() {
  const bool send = OpWhat(kBatchSend).Value(), publish = OpWhat(kBatchPublish).Value();
  CboAs.Clear();
  CboAs.Add(Tr("Install file (.exe)"), kSendProgram);
  CboAs.Add(Tr("Zip file"), kSendZip);
  if (send) CboAs.Add(Tr("Download link"), kSendLink);
  if (send) CboAs.Add(Tr("As each had it the last time"), kAsLast);
  CboAs.SetListIndex(1);
  CboAs.SetEnabled(!publish);
  for (Control* control : {static_cast<Control*>(&TxtFolder), static_cast<Control*>(&CmdBrowse)})
    control->SetEnabled(!send);
  for (Control* control : {static_cast<Control*>(&CboTo), static_cast<Control*>(&TxtSubject),
                           static_cast<Control*>(&TxtMessage), static_cast<Control*>(&ChkInstructions),
                           static_cast<Control*>(&TxtPerMinute), static_cast<Control*>(&CmdTry)}) {
    control->SetEnabled(send);
  }
  CmdChoose.SetEnabled(send && CboTo.ListIndex() == kToChosen);
  ShowGo();
}

void FrmBatch::Browse() {
  const std::string folder = TheDesktop().ChooseFolder(Tr("Where the calculators go"), TxtFolder.Text());
  if (!folder.empty()) TxtFolder.SetText(folder);
}

void FrmBatch::ChooseReaders() {
  LetterOrder order = Order();
  order.contacts.reset();
  const auto letters = LettersFor(database_, TickedJobs(), order);
  if (readers_.empty()) {
    for (const Letter& letter : letters) readers_.insert(letter.contactId);
  }
  FrmReaders readers(run_, letters, readers_);
  TheDesktop().ShowModal(readers);
  if (readers.Confirmed) readers_ = readers.Chosen();
}

void FrmBatch::Pause(bool paused) {
  paused_ = paused;
  CmdPause.SetCaption(paused ? Tr("Continu&e") : Tr("Paus&e"));
}

std::vector<BatchJob> FrmBatch::TickedJobs() {
  std::set<int> ticked;
  for (const ListView::Row& row : LvwWho.Rows()) {
    if (row.checked) ticked.insert(IdOfKey(row.key));
  }
  return BatchJobs(database_, branding_, [&](const Standing& each) { return ticked.contains(each.supplierId); });
}

LetterOrder FrmBatch::Order() const {
  const std::string message = ReplaceAll(ReplaceAll(TxtMessage.Text(), "\r\n", "\n"), "\n", "\r\n");
  LetterOrder order;
  order.toLast = CboTo.ListIndex() == kToLast;
  if (CboTo.ListIndex() == kToChosen) order.contacts = readers_;
  order.wayOfLast = CboAs.ItemData() == kAsLast;
  order.sendType = order.wayOfLast ? static_cast<int>(kSendZip) : std::max(CboAs.ItemData(), 0);
  order.subject = TxtSubject.Text();
  order.message = message;
  order.instructions = ChkInstructions.Value();
  return order;
}

int FrmBatch::PerMinute() const {
  return static_cast<int>(std::clamp(LeadingNumber(TxtPerMinute.Text()), 0.0, 60'000.0));
}

// Asks and says what is in the way.
bool FrmBatch::MayBegin() {
  std::string missing;
  const bool none =
      std::none_of(LvwWho.Rows().begin(), LvwWho.Rows().end(), [](const ListView::Row& row) { return row.checked; });
  if (!OpWhat(kBatchSend).Value() && Trim(TxtFolder.Text()).empty()) missing = Tr("Please choose a folder");
  if (OpWhat(kBatchSend).Value() && Trim(TxtSubject.Text()).empty()) missing = Tr("Please enter a subject");
  if (none) missing = run_.ReplaceAliases(Tr("Please tick at least one <SUPPLIER>"));
  if (missing.empty()) return true;
  run_.MessageBox(missing, Caption(), BoxButtons::Ok, BoxIcon::Exclamation);
  return false;
}

void FrmBatch::Remember() const {
  WriteIni(branding_.folders.app, "General", "OPTIONS", "BATCHFOLDER", TxtFolder.Text());
  WriteIni(branding_.folders.app, "General", "OPTIONS", "BATCHSUBJECT", TxtSubject.Text());
  WriteIni(branding_.folders.app, "General", "OPTIONS", "BATCHPERMINUTE", TxtPerMinute.Text());
}

void FrmBatch::Try() {
  if (!MayBegin()) return;
  try {
    const auto jobs = TickedJobs();
    std::vector<std::vector<std::string>> rows;
    report_ = "SupplierID,CompanyName,Contact,Email,Subject,Message\n";
    for (const Letter& letter : LettersFor(database_, jobs, Order())) {
      const auto job = std::find_if(jobs.begin(), jobs.end(),
                                    [&](const BatchJob& each) { return each.supplierId == letter.supplierId; });
      const std::string instructions =
          letter.instructions ? GetInstructions(branding_.folders.app, letter.sendType, run_) : "";
      const WrittenLetter written = Written(letter, branding_, job->publication.supplier, instructions, "", web_);
      rows.push_back({letter.companyName, written.to, Tr("would be sent"),
                      written.subject + " | " + ReplaceAll(ReplaceAll(written.text, "\r", ""), "\n", " ")});
      report_ += std::to_string(letter.supplierId) + "," + CsvCell(letter.companyName) + "," + CsvCell(letter.contact) +
                 "," + CsvCell(letter.email) + "," + CsvCell(written.subject) + "," + CsvCell(written.text) + "\n";
    }
    ShowReport(rows);
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

void FrmBatch::Go() {
  stop_ = false;
  try {
    CountLeft();
    if (GoesOn()) {
      const Answer answer =
          run_.MessageBox(Tr("%1 messages of the last run are left.\n\nYes goes on with them, No forgets them.",
                             {std::to_string(left_)}),
                          Caption(), BoxButtons::YesNoCancel, BoxIcon::Question);
      if (answer == Answer::Cancel) return;
      if (answer == Answer::Yes) return Send(nullptr);
      PostRoom(database_, {branding_, web_}, run_).Forget();
      left_ = 0;
      return ShowGo();
    }
    if (!MayBegin()) return;
    Remember();
    if (!OpWhat(kBatchSend).Value()) return Make();
    const auto letters = LettersFor(database_, TickedJobs(), Order());
    if (letters.empty()) {
      run_.MessageBox(Tr("None of them has a contact to write to"), Caption(), BoxButtons::Ok, BoxIcon::Exclamation);
      return;
    }
    const std::string question = Tr("Send %1 messages?", {std::to_string(letters.size())});
    if (run_.MessageBox(question, Caption(), BoxButtons::YesNo, BoxIcon::Question) != Answer::Yes) return;
    Send(&letters);
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

void FrmBatch::Make() {
  const std::string folder(Trim(TxtFolder.Text()));
  std::vector<BatchResult> results;
  {
    Progress progress(*this);
    results = MakeBatch(database_, TickedJobs(), OpWhat(kBatchPublish).Value() ? kBatchFolder : CboAs.ItemData(),
                        folder, progress);
  }
  report_ = BatchReport(results);
  WriteFile(folder + "\\report.csv", report_);
  std::vector<std::vector<std::string>> rows;
  for (const BatchResult& each : results)
    rows.push_back({each.companyName, each.path, each.done ? Tr("done") : Tr("failed"), each.detail});
  ShowReport(rows);
  ShowStandings();
}

void FrmBatch::Send(const std::vector<Letter>* fresh) {
  {
    Progress progress(*this);
    PostRoom room(database_, {branding_, web_, PerMinute()}, progress);
    if (fresh) room.Begin(*fresh);
    room.Send();
  }
  CountLeft();
  ShowLetters();
  ShowStandings();
  ShowGo();
}

void FrmBatch::Block(bool working) {
  working_ = working;
  for (CommandButton* button : {&CmdTry, &CmdGo, &CmdSave, &CmdClose}) button->SetEnabled(!working);
  CmdStop.SetEnabled(working);
  CmdPause.SetEnabled(working);
  Pause(false);
  LvwWho.SetEnabled(!working);
  if (working) return ShowReport({});
  BarProgress.SetValue(0);
  LblProgress.SetCaption("");
  CmdTry.SetEnabled(OpWhat(kBatchSend).Value());
}

}  // namespace tarvolinex
