#include "ui/batch/FrmBatch.h"

#include <algorithm>

#include "calc/InputRules.h"
#include "controls/Desktop.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Suppliers.h"

namespace tarvolinex {

// Shows the work in this window, with the time that is left.
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
  for (const std::string& to : {Tr("Every contact with an address"), Tr("Who was sent one before")}) CboTo.Add(to);
  CboTo.SetListIndex(0);
  LvwWho.CheckBoxes = true;
  LvwWho.Columns() = {{run.ReplaceAliases(Tr("<SUPPLIER>")), "", 2800},
                      {Tr("State"), "", 1200},
                      {Tr("Last sent"), "", 1900},
                      {Tr("As"), "", 700},
                      {Tr("Changed since"), "", 5000}};
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
  OpWhat(kBatchSend).SetValue(true);
  LvwWho.BeginFill();
  LvwWho.Clear();
  stale_.clear();
  never_.clear();
  try {
    ForEachStanding(database_, branding_, [&](const Standing& each) {
      ListView::Row row;
      row.key = "ID" + std::to_string(each.supplierId);
      row.text = each.companyName;
      const bool stale = each.state == Currentness::Stale;
      row.cells = {stale                              ? Tr("out of date")
                   : each.state == Currentness::Never ? Tr("never sent")
                                                      : Tr("current"),
                   each.lastSent, each.sentAs, each.changes};
      row.toolTip = each.changes;
      row.checked = stale;
      if (stale) stale_.insert(each.supplierId);
      if (each.state == Currentness::Never) never_.insert(each.supplierId);
      LvwWho.Add(std::move(row));
    });
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
  LvwWho.EndFill();
  LvwWho.Select(LvwWho.FirstShown());
  CmdTick(kTickFound).SetEnabled(!found_.empty());
  CmdSave.SetEnabled(false);
  CmdStop.SetEnabled(false);
  if (LettersLeft(database_) > 0) {
    CmdGo.SetCaption(Tr("&Go On"));
    ShowLetters();
  }
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
  CboAs.SetListIndex(1);
  CboAs.SetEnabled(!publish);
  for (Control* control : {static_cast<Control*>(&TxtFolder), static_cast<Control*>(&CmdBrowse)})
    control->SetEnabled(!send);
  for (Control* control : {static_cast<Control*>(&CboTo), static_cast<Control*>(&TxtSubject),
                           static_cast<Control*>(&TxtMessage), static_cast<Control*>(&ChkInstructions),
                           static_cast<Control*>(&TxtPerMinute), static_cast<Control*>(&CmdTry)}) {
    control->SetEnabled(send);
  }
}

void FrmBatch::Browse() {
  const std::string folder = TheDesktop().ChooseFolder(Tr("Where the calculators go"), TxtFolder.Text());
  if (!folder.empty()) TxtFolder.SetText(folder);
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
  return {CboTo.ListIndex() == 1, std::max(CboAs.ItemData(), 0), TxtSubject.Text(), message, ChkInstructions.Value()};
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
    for (const Letter& letter : LettersFor(database_, jobs, Order())) {
      const auto job = std::find_if(jobs.begin(), jobs.end(),
                                    [&](const BatchJob& each) { return each.supplierId == letter.supplierId; });
      const std::string instructions =
          letter.instructions ? GetInstructions(branding_.folders.app, letter.sendType, run_) : "";
      const WrittenLetter written = Written(letter, branding_, job->publication.supplier, instructions, "", web_);
      rows.push_back({letter.companyName, written.to, Tr("would be sent"),
                      written.subject + " | " + ReplaceAll(ReplaceAll(written.text, "\r", ""), "\n", " ")});
    }
    ShowReport(rows);
  } catch (const RuntimeError& failure) {
    run_.ShowError(failure.Description());
  }
}

void FrmBatch::Go() {
  stop_ = false;
  try {
    if (LettersLeft(database_) > 0) {
      const Answer answer =
          run_.MessageBox(Tr("%1 messages of the last run are left.\n\nYes goes on with them, No forgets them.",
                             {std::to_string(LettersLeft(database_))}),
                          Caption(), BoxButtons::YesNoCancel, BoxIcon::Question);
      if (answer == Answer::Cancel) return;
      if (answer == Answer::Yes) return Send();
      BeginLetters(database_, {});
      CmdGo.SetCaption(Tr("&Start"));
      return;
    }
    if (!MayBegin()) return;
    Remember();
    if (!OpWhat(kBatchSend).Value()) return Make();
    const auto letters = LettersFor(database_, TickedJobs(), Order());
    const std::string question = Tr("Send %1 messages?", {std::to_string(letters.size())});
    if (run_.MessageBox(question, Caption(), BoxButtons::YesNo, BoxIcon::Question) != Answer::Yes) return;
    BeginLetters(database_, letters);
    Send();
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
}

void FrmBatch::Send() {
  {
    Progress progress(*this);
    SendLetters(database_, {branding_, web_, PerMinute()}, progress);
  }
  ShowLetters();
  CmdGo.SetCaption(LettersLeft(database_) > 0 ? Tr("&Go On") : Tr("&Start"));
}

void FrmBatch::ShowLetters() {
  const std::vector<Letter> letters = Letters(database_);
  report_ = LetterReport(letters);
  std::vector<std::vector<std::string>> rows;
  for (const Letter& each : letters) {
    const bool doubtful = each.state == LetterState::Doubtful;
    const bool left = each.state == LetterState::Waiting || each.state == LetterState::Sending;
    rows.push_back({each.companyName, each.contact + " <" + each.email + ">",
                    left ? Tr("left") : std::string(NameOf(each.state)),
                    doubtful ? Tr("Please ask the reader before you send it again: %1", {each.detail}) : each.detail});
  }
  ShowReport(rows);
}

void FrmBatch::ShowReport(const std::vector<std::vector<std::string>>& rows) {
  LvwReport.BeginFill();
  LvwReport.Clear();
  LvwReport.Columns() = {{run_.ReplaceAliases(Tr("<SUPPLIER>")), "", 2800},
                         {Tr("For whom or where"), "", 3400},
                         {Tr("Result"), "", 1300},
                         {Tr("Detail"), "", 5000}};
  int number = 0;
  for (const auto& cells : rows) {
    ListView::Row row;
    row.key = std::to_string(++number);
    row.text = cells.front();
    row.cells.assign(cells.begin() + 1, cells.end());
    LvwReport.Add(std::move(row));
  }
  LvwReport.EndFill();
  CmdSave.SetEnabled(!report_.empty());
}

void FrmBatch::Block(bool working) {
  working_ = working;
  for (CommandButton* button : {&CmdTry, &CmdGo, &CmdSave, &CmdClose}) button->SetEnabled(!working);
  CmdStop.SetEnabled(working);
  LvwWho.SetEnabled(!working);
  if (working) return ShowReport({});
  BarProgress.SetValue(0);
  LblProgress.SetCaption("");
  CmdTry.SetEnabled(OpWhat(kBatchSend).Value());
}

}  // namespace tarvolinex
