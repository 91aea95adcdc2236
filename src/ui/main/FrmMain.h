// The main window: where every command starts. Its panels own their controls and rules; the window owns the database
// that they work on, the supplier list, and what happens between them.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/Run.h"
#include "distribute/SentMail.h"
#include "exchange/ImportPlan.h"
#include "publish/CalculatorFolder.h"
#include "publish/LivePage.h"
#include "publish/Organisation.h"
#include "publish/QuoteSheet.h"
#include "store/Changes.h"
#include "store/Database.h"
#include "ui/main/BoundFields.h"
#include "ui/main/ContactsPanel.h"
#include "ui/main/FormsPanel.h"
#include "ui/main/MainMenus.h"
#include "ui/main/QuotePanel.h"
#include "ui/main/RateCardPanel.h"
#include "ui/main/SendPanel.h"
#include "ui/main/ShownSupplier.h"
#include "ui/main/StandingMarks.h"
#include "ui/main/SupplierPanel.h"

namespace tarvolinex {

// The four tabs.
enum MainTab { kTabQuote = 0, kTabDetails = 1, kTabSettings = 2, kTabSend = 3 };

class FrmOptions;

class FrmMain : public Window {
 public:
  // The run must outlive the window; its status line is the window's while that lives.
  explicit FrmMain(Run& run);
  ~FrmMain() override;

  Run& run;
  Database database;
  ShownSupplier shown;

  MainMenus menus;
  Toolbar Toolbar1;
  Label LblFilter;
  TextBox TxtFilter;  // hides rows of the list below it
  ListView LvwSuppliers;
  StandingMarks standing;
  Label LblCompany;
  Label LblChanged;  // who else has changed the shown supplier since it was loaded; else it is not seen
  TabStrip TabMain;
  QuotePanel quote;
  SupplierPanel supplier;
  ContactsPanel contacts;
  RateCardPanel rateCard;
  FormsPanel forms;
  SendPanel send;
  TextBox TxtStatus;
  Label LblDatabase;  // the database in use
  ProgressBar ProgressBar1;
  Timer Timer1;
  Timer TimerOthers;  // looks whether another program has stored something

  bool DatabaseUnpacked = false;           // the last opening has put a fresh database in place
  bool Working = false;                    // a calculator is packed and sent
  RemovedRows Removed;                     // what was removed last
  std::vector<RemovedRows> RemovedQuotes;  // in this database, the last one at the end

  // Runs once, before the window is first shown: INI values, captions, database, defaults. A step that fails is passed
  // over. Throws ProgramEnded when there is no database to open.
  void Load();
  // Saves pending edits unless an error was reported during the run.
  void Unload();

  // Captions in the organisation's words; the units' lists begin anew.
  void ApplyCaptions();
  // The preferences have been stored: the window takes their words, the quote stays.
  void UsePreferences();
  // Before preferences are stored here that were made of `before`: stores what is changed in the shared database, where
  // there is one. Where another desk has changed the same fields meanwhile, the user chooses first. What is to be
  // stored here is then in `mine`. False when he does not choose, or nothing can be stored, which is told.
  bool AgreeWithOffice(const Organisation& before, Organisation& mine);
  // The same of details that were made of the run's preferences.
  bool AgreeOnDetails(CalculatorPreferencesRecord& edited);

  // Twips of the inner size; raises them to the smallest size and places what follows the window's edges.
  static int SmallestWidth();
  static int SmallestHeight();
  void Arrange(int width, int height);
  // Assigns each toolbar button the picture of its key.
  void SetImageForButtonAndDrop();
  // Blocks or frees the supplier list, the tab headers, the toolbar and the four top-level menus.
  void EnableCommands(bool blocked);

  // Opens the database on `DataFolder`\Tarvolinex.mdb, closing it first when it is open. A failure is a fatal
  // report of its number and description.
  void ConnectDatabase();
  // The whole sequence: unpack, find (asking the user when it is missing or askUser is set), remember the folder,
  // connect, fill the lists, show the main window. Returns false when there is no database to open; nothing has then
  // changed. askUser becomes true when the user agrees to look for the file. A database that cannot be opened is
  // reported, and the user may choose another one; throws ProgramEnded when he does not.
  bool OpenDatabase(bool& askUser);
  // Fills the forms list and the supplier list and loads the supplier that the list selects.
  void LoadStartLists();
  // Gives every contact of a fresh database the organisation's own e-mail address.
  void PointContactsAtOrganisation();

  // Refills the supplier list and selects the newest supplier (the one with the highest ID) or the first; the selected
  // supplier is not loaded.
  void LoadSupplierList(bool selectNewest);
  // The selection handler of the supplier list.
  void LvwSuppliers_ItemClick();
  // Loads the supplier whose row is selected; the previous one's edits are saved first.
  void LoadSupplier();
  // The shown supplier's row, its tooltip and the window's title take the name of the name field.
  void ShowSupplierName();
  // Puts the default supplier's values and form links into the fields.
  void LoadDefaultSupplier();
  // Adds and selects a row for a new supplier, seeded from the default supplier.
  void NewSupplier();
  // Goes to a contact of a supplier that another window has found.
  void ShowContact(int supplierId, int contactId);

  // asSupplier true: stores the shown supplier when it was edited. False: stores its fields as the default supplier.
  void SaveSupplier(bool asSupplier);
  // Stores what was edited of the shown supplier, its form links and the shown contact, together or not at all, when no
  // load is in progress. Where somebody else has changed the same fields since they were loaded the user chooses first.
  // One that somebody else has removed is put back with what was typed, or left, as the user wants. Returns false when
  // it was left, or when the user does not choose: nothing is stored, everything stays edited, and whoever wanted to go
  // on with the supplier does not.
  [[nodiscard]] bool SavePendingChanges();
  // The same, and the shown contact where it alone was edited.
  [[nodiscard]] bool SaveAll() { return SavePendingChanges() && contacts.SaveContact(); }
  // The same, for whoever leaves the supplier anyhow: also true when it is gone and nothing of it waits any more.
  [[nodiscard]] bool MayLeave() { return SaveAll() || ReadsAsLoaded(); }
  // Whether the shown supplier is a stored one, and nothing of it has been edited since it was loaded.
  bool ReadsAsLoaded() const;

  // 0 adds a supplier, 1 removes the shown one, any other value (kUndo) undoes its edits. With pending edits 0 saves
  // them and 1 undoes them.
  static constexpr int kUndo = 2;
  void SupplierCommand(int action);
  // Deletes the shown supplier with its links and contacts, after a question. The last one stays.
  void RemoveSupplier();
  // Puts what was removed last in this run back, a supplier with its contacts and links or one contact, and selects the
  // supplier. Returns the contact to show, 0 for none. Nothing when nothing was removed from this database.
  int UndoRemove();
  // Remembers what has just been removed and offers to put it back; without statements nothing is offered.
  void OfferUndo(RemovedRows removed);
  // Reads suppliers or contacts from a file that the user chooses.
  void ShowImport();
  // Copies the shown supplier's rate card to others, or changes the rates of several.
  void ShowRates(bool copies);
  // Shows the database after an import or a change of many rows, and offers to take it back.
  void TakeChanges(RemovedRows undo);
  void ShowAgain(int supplierId);
  // Asks for a file and writes the table there.
  void Export(ImportKind kind);

  // The shown supplier's calculator, as it is published; its linked forms are read now.
  Publication Calculator();
  Branding OwnBranding() const { return {run.Places(), run.CalculatorPreferences, run.CustomerReference}; }
  // Whether there is a supplier to publish, with rates that are numbers; tells what is in the way.
  bool MayPublish();
  // Builds the folder and opens its test page, when the preferences' limits allow it.
  void PreviewCalculator();
  // Makes the live page of the shown supplier and quote with the data folder's logo, and opens it.
  void PreviewFormPage(const std::string& pagePath);
  // Another window has changed which forms there are.
  void ReloadForms();
  // What the options window asks of this one.
  void Serve(FrmOptions& options);

 private:
  void WireShell();
  void WireMenus();
  void WirePanels();
  void WireSuppliers();
  void MakeToolbar();
  void MakeTabs();

  void Toolbar1_ButtonClick(const std::string& key);
  void TabMain_Click();
  void Timer1_Tick();
  void Form_KeyUp(Key key);
  void ShowStatus(bool flashing, std::string_view text, int progress);
  void SetNote(std::string_view text, bool correction = false);
  bool Nameless() const { return supplier.Nameless(); }
  // As SaveAll; the contact then stands in the lists as it was stored.
  [[nodiscard]] bool SaveShown();
  void Preview();
  void RefreshSupplierList();
  void SaveAsDefault();
  void CreateNewDatabase();
  void LoadAppearance();
  void SaveAppearance();
  void LoadIniFileValues();
  void NoteEarlierMail();
  void ShowSharedDatabase();
  void ShowAbout();
  void ShowOptions(bool onForms);
  void ShowOrganisationDetails();
  void ShowContactSearch();
  void ShowMailSettings();
  void ShowSchedule();
  void ShowBatch();
  void ShowSent();
  void ShowTerms();
  void ShowSheet();
  void ShowQuotes();
  void KeepShownQuote();
  void ChangeKeptQuote(const KeptQuote& kept);
  void ShowKeptQuote(int number);
  void RefreshKeptQuote();
  bool ShowSupplierOf(const KeptQuote& kept);
  void CopyAsNew(const KeptQuote& kept);
  int DaysOfValidity() const;
  void StoreDetails(int number, const QuoteDetails& details);
  // What was typed for the sheet of a supplier's quote that is not kept yet.
  struct SheetDraft {
    int supplierId = 0;
    QuoteDetails details;
    bool endless = false;  // the proposed last day of validity has been taken off
  };
  // That of the shown supplier.
  SheetDraft& Draft();
  std::optional<CalendarDay> ProposedEnd(CalendarDay day);
  void ShowSheet(const SheetContents& contents, SheetDraft& draft);

  // Whether the database can be written to; the user is told when it cannot.
  bool MayStore();
  void LockFields();
  void LockButtons();
  void ShowDatabaseName();
  void KeepDeskCopy();
  bool LooksAtCopy();
  bool AgreesToLook();
  bool ChooseDatabase();
  bool FindDatabase(bool& askUser);
  void Connect();
  bool LooksForAnother();
  void ConnectOrChooseAnother();
  void UseFreshDatabase();

  void FillSupplierList(bool selectNewest);
  std::function<bool(const ListView::Row&)> Named(const std::string& wanted);
  void ShowStandings();
  std::vector<std::string> ReadSuppliers(std::vector<ListView::Row>& rows);
  std::vector<ListView::Row> RowsByName();
  SupplierRow ReadForeseen(int id);
  void ShowSupplier(const SupplierRow& row);
  void UseSupplierSettings(const SupplierRow& row);
  // The same, applies what the supplier offers and recalculates the quote.
  void LoadSupplierRateCard(const SupplierRow& row);
  void ShowNoSupplier();
  void StayAtShownSupplier();
  void ReportMissingSupplier();
  bool PutBackOrLeave();
  bool IsThereAgain(const RemovedRows& removed);
  bool MayUndo(const RemovedRows& removed);
  void TxtSupplier_Changed(int field, bool changedBefore);
  void LvwSuppliers_ColumnClick(int column);
  void TxtFilter_Change();
  void ForgetUneditedFields();

  bool NeedsStoring();
  bool StoreShown();
  bool StoreAsChosen();
  std::function<void()> WayBack(bool withRow);
  void Settle();
  void TellOfLoss(const RuntimeError& loss);
  bool LeavesUnstored();
  void NoteOwnChange();
  void RememberLastChange();
  void ForgetLastChange();
  void ShowWhoChanged();
  bool StoreUnlessMet(SupplierRow& now, std::vector<MetField>& met);
  std::vector<MetField> Meet(const SupplierRow& now);
  bool Decide(std::vector<MetField>& met);
  bool Decide(std::vector<MetField>& met, const std::string& about);
  void StoreFields(bool asSupplier);
  void RememberDefaults();
  void StoreAsDefault();
  void StoreDefaultAsChosen();
  bool StoreDefaultUnlessMet(Row& now, std::vector<MetField>& met, const std::set<std::string>& theirs);
  void RefreshRow();
  void UseStoredRateCard();
  void UseRateCard(const SupplierRow& row);
  bool AtRest();
  void TimerOthers_Tick();
  void FollowOthers();
  void FollowShownSupplier();
  bool TakeStored(const SupplierRow& now);
  void FollowSupplierList();
  void TakePreferences();
  void FollowPreferences();
  void UsePreferencesOf(const Branding& branding);
  void LoadInsteadOfMissing();
  void ShowInsertedSupplier();

  void SendCalculator();
  void CreateInstallFile();

  BoundFields fields_{*this, "SUPPLIER"};
  BoundFields defaults_{*this, "SUPPLIER"};  // of the default supplier, as it was last seen here
  SheetDraft draft_;
  bool locked_ = false;               // the fields, because the database can only be read
  std::string note_;                  // what the status line reads while nothing goes on
  bool correction_ = false;           // it tells what became of something typed
  bool busy_ = false;                 // the status line tells of work
  int lastChangeOf_ = 0;              // whose change lastChange_ is
  std::optional<Change> lastChange_;  // of the shown supplier, as it was loaded or stored
  bool heldBack_ = false;             // something of the shown supplier was edited when it was last followed
  std::string told_;                  // of what others have stored, at the last look
};

}  // namespace tarvolinex
