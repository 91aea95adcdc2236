// The calculator options: a tree of settings, and beside it the editor of the one that is selected.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "calc/InputRules.h"
#include "controls/Controls.h"
#include "controls/PaintControls.h"
#include "core/Records.h"
#include "core/Run.h"
#include "publish/Organisation.h"
#include "store/Forms.h"
#include "ui/options/OptionNodes.h"

namespace tarvolinex {

inline constexpr std::int64_t kLargestPicture = 10 << 20;  // bytes; what is larger no calculator carries

class FrmOptions : public Window {
 public:
  FrmOptions(Run& run, Database& database);

  // Before the window is shown: a working copy of the run's preferences and of the page's options, the tree, the icons.
  // What is edited goes into the copy when another node is selected or a button pressed; OK and View alone pass the
  // copy on. What is done to files and form rows happens at once and stays, whatever button follows.
  void Load();
  // As a click on the root of the form pages, which shows them.
  void ShowForms();

  // What the window asks of whoever shows it.
  using IconSaved = std::function<void(const std::string& iconName)>;
  struct Callers {
    // Edits an icon by its file name, a new one for an empty name, and tells the name that it was saved under.
    std::function<void(const std::string& iconFile, const IconSaved& saved)> openIconEditor;
    // Before they are stored: what they were, and what they have become, which it may change. False = not stored.
    std::function<bool(const Organisation& before, Organisation& edited)> agree;
    std::function<void()> preferencesSaved;
    std::function<void()> formsChanged;  // which of them there are to choose from
    std::function<void()> preview;       // of the shown supplier's calculator
    std::function<void(const std::string& page)> previewForm;
  };
  Callers Around;

  TreeView TreeOptions;
  ControlArray<CommandButton> Cmd;  // OK, Cancel, View, Help

  // The panels; exactly one is visible.
  Frame FraBlank;
  Frame FraTextString;
  TextBox TxtString;
  Frame FraValue;
  TextBox TxtIncre;
  UpDown UpDown1;
  Frame FraColour;
  ColourBox PicColour;
  CommandButton CmdColor;
  Frame FraYesNo;
  CheckBox ChkYesNo;
  Frame FraDepOptions;
  ControlArray<CheckBox> ChkdepSelect;  // value, percentage, advanced payments
  Frame FraForms;
  ControlArray<Label> LblForms;
  ControlArray<TextBox> txtForms;  // description, link name
  CheckBox ChkFrmAvailable;
  ControlArray<CommandButton> cmdForm;  // edit, import, view; the import stands outside the panel
  Frame FraIcon;
  ComboBox CboIcons;
  PictureBox PicIcon;
  CommandButton CmdIcon;
  Frame FraLogo;
  TextBox TxtLogo;
  CommandButton CmdCoLog;
  Label LblPicture;  // which picture is shown below
  PictureBox PicLogo;
  Frame FraLanguage;
  ComboBox CboLanguage;
  Frame FraMeaning;
  TextBox TxtMeaning;
  Label LblHint;  // what the selected setting does for whom
  // A calculator in small, in the colours and with the pictures as they are edited.
  Label LblPreviewTitle;
  PictureBox PicPage;
  Label LblPreviewPanel;
  PictureBox PicPageLogo;
  ControlArray<Label> LblPreview;

 private:
  void WireButtons();
  void WireEditors();
  void AddRootTree();
  void Cmd_Click(int button);
  // The copy becomes the run's preferences and is saved, with its icon. False when the user does not agree, or the
  // page's options cannot be stored, which is reported: nothing is saved here.
  bool SavePreferences();
  bool Agrees();
  bool SavePageOptions();

  void TreeOptions_NodeClick();
  void ShowEditor(const OptionNode& node);
  void ShowText(const OptionNode& node);
  void ShowValue(const OptionNode& node);
  void ShowOnOff(const OptionNode& node);
  void ShowDepositTypes(const OptionNode& node);
  void ShowLanguage(const OptionNode& node);
  void HidePanels();

  // Commits the visible panel's value into the copy.
  void SaveChangedValue();
  void StoreValue(const OptionNode& node);
  // The field in the copy of the preferences or of the page's options.
  bool& SwitchOf(const OptionNode& node);
  std::int32_t& WholeOf(const OptionNode& node);
  std::string& TextOf(const OptionNode& node);
  std::int16_t TickedDepositTypes() const;

  void SetSwatch(Colour colour);
  void ChangeColour();
  // An explanation is one paragraph: Return is the window's, line breaks of a pasted text part words.
  void TxtMeaning_Change();
  void ChkdepSelect_Click(int box);
  // The setting's sentence, and the small calculator where the setting is one that it shows.
  void ShowHint(const OptionNode* node);
  void ShowPreview();

  void WireForms();
  bool IsFormKey(const std::string& key) const;
  // Adds a node for each form, in place of one that it had.
  void AddFormsToTree(const std::vector<FormRow>& forms);
  void ShowForm();
  void SaveFormDetails();
  void DeleteSupplierLinks();
  // From the suppliers and from the main window's list.
  void RemoveUnavailableForms();
  void ImportHTMLform();
  void ViewForm();

  void WireGraphics();
  // Lists the icons and selects the named one; the name becomes what the list calls it.
  void RefreshIconList(std::string& name);
  void CboIcons_Click();
  // Previews the icon and keeps its name for the editor; none for an empty name.
  void ShowIcon(const std::string& fileName);
  std::string ChosenIconText() const;
  // Cut to the record's width a name would be another icon's, or none's.
  bool FitsRecord(const std::string& iconName) const;
  void StoreIcon();
  void BrowseForPicture();
  void ShowPictureImport(const OptionNode& node);
  void StorePicture(const OptionNode& node);
  // The picture that is typed, else the one in use.
  void ShowChosenPicture();
  // What the value box may hold.
  NumberRule ValueRule() const;
  // 0 the header logo, 1 the background.
  static std::size_t PictureKind(const OptionNode& node);
  void SaveLogo(std::size_t kind);

  std::string InLogoFolder(const std::string& name) const;

  Run& run_;
  Database& database_;
  CalculatorPreferencesRecord loaded_, edited_;  // as they were read or saved last, and as they are edited
  PageOptions page_, storedPage_;                // as they are edited, and as they were read
  std::string pageFault_;                        // why they could not be read; empty = they were
  std::string currentKey_;                       // of the node whose value the visible panel shows; empty when none
  bool valueTyped_ = false;  // the value box has been changed by the user: there is something to commit
  int valueKind_ = 0;
  std::int32_t valueLimit_ = 0;
  std::string meaning_;       // the explanation's text before it is changed
  std::string enteredValue_;  // the value box's text when it was entered
  bool filling_ = false;      // the program ticks the boxes itself
  int currentFormId_ = 0;
  bool formDetailsChanged_ = false;             // the form panel's fields were edited
  bool formsListChanged_ = false;               // a form was saved since the window opened
  std::string chosenIcon_;                      // its file's name; empty for a new one
  std::array<std::string, 2> pendingPictures_;  // paths of the pictures imported last: logo, background
};

}  // namespace tarvolinex
