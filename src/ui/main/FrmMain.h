// The main window: where every command starts.
#pragma once

#include <map>
#include <string>

#include "calc/InputRules.h"
#include "core/MainWindow.h"

namespace tarvolinex {

class FrmMain : public MainWindow {
 public:
  FrmMain();

  // Runs once, before the window is first shown: INI values, captions, database, defaults. A step that fails is passed
  // over. Throws ProgramEnded when there is no database to open.
  void Load();

  // Saves pending edits unless an error was reported during the run.
  void Unload();

  // Twips of the inner size; raises them to the smallest size and places what follows the window's edges.
  static int SmallestWidth();
  static int SmallestHeight();
  void Arrange(int width, int height);

  // 0 adds a supplier, 1 removes the shown one, any other value (kUndo) undoes its edits. With pending edits 0 saves
  // them and 1 undoes them.
  static constexpr int kUndo = 2;
  void SupplierCommand(int action);

  // The selection handler of the supplier list.
  void LvwSuppliers_ItemClick();

  // Assigns each toolbar button the picture of its key.
  void SetImageForButtonAndDrop();

 private:
  void WireShell();
  void WireMenus();
  void WireQuote();
  void WireRateCard();
  void WireSuppliers();
  void WireContacts();
  void WireSend();

  void Toolbar1_ButtonClick(const std::string& key);
  void TabMain_Click();
  void Timer1_Tick();
  // 0 the e-mail, 1 the install file.
  void ShowSendFrame(int mode);
  void Form_KeyUp(Key key);
  // The shown supplier's name is empty: it is not stored like that.
  bool Nameless() const;
  // Stores the shown supplier and the shown contact, which then stands in the lists as it was stored.
  void SaveShown();
  void Preview();
  void RefreshSupplierList();
  void SaveAsDefault();
  void CreateNewDatabase();
  void LoadAppearance();
  void SaveAppearance();
  void ShowAbout();
  void ShowOptions(bool onForms);
  void ShowOrganisationDetails();
  void ShowContactSearch();

  void TxtProCalc_Change(int box);
  void TxtProCalc_LostFocus(int box);
  void UpDNew_Step(int box, bool up);
  void CboProCalc_Click(int list);
  void ckCapLock_Click();
  void ChkPremium_Click();

  void txtRangeTo_Change(int box);
  void WireRateBox(TextBox& box, UpDown& upDown, const NumberRule& rule);
  bool LeaveRateBox(TextBox& box, const NumberRule& rule);

  void TxtSupplier_Change(int field);
  void TxtSupplier_LostFocus(int field);
  void LvwSuppliers_ColumnClick(int column);
  void TxtFilter_Change();
  void ForgetUneditedFields();
  void LvwForms_ItemCheck();
  void LvwForms_DblClick();

  void LstContacts_Click();
  void TxtContact_Change();
  void TxtContact_GotFocus();
  void CmdContact_Click(int button);
  bool ContactHasName();
  void RemoveContact();

  void CheckAllContacts();
  void BrowseForInstallFile();
  void CreateInstallFile();
  void cmboFileType_Click();
  void TxtCalcCreate_Change();

  std::map<const TextBox*, std::string> numbers_;  // what each number box was last left with or given
  bool formTicksChanged_ = false;                  // by the user, since the shown supplier was loaded
};

}  // namespace tarvolinex
