// The form pages of the options window.
#include "platform/text/Text.h"
#include "support/OptionsFixture.h"
#include "ui/options/frmFormEditWarning.h"

namespace tarvolinex {

class OptionsFormsTest : public WithOptions {
 protected:
  // Imports a page of these bytes; returns the new row's description.
  std::string Import(const std::string& page, const std::string& answer = {}) {
    desktop.files = {folder.File("import/page.htm", page)};
    if (!answer.empty()) desktop.files.push_back(answer);
    options.cmdForm(1).Press();
    return Newest("Description");
  }
  std::string Newest(const std::string& column) {
    return Ask("SELECT " + column + " FROM Forms WHERE ID=(SELECT MAX(ID) FROM Forms)");
  }
  void LockDatabase() {
    other.Open(Where());
    other.Begin();
    other.Flush();
  }
  Connection other;
};

TEST_F(OptionsFormsTest, TheTitleOfOneLineIsDescriptionAndLinkName) {
  const std::string fifty(50, 'x');
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"lower case", "<html>\n<title>Finance Enquiry</title>", "Finance Enquiry"},
      {"too long", "<TITLE>" + fifty + "yz</TITLE>", fifty},
      {"second line has both", "<title>\r\n<Title> Both </title>\r\n", "Both"},
      {"apostrophe", "<title>Dealer's <b>'form'</title>", "Dealer`s <b>`form`"},
      {"old line ends", "<html>\r<title>Old</title>\r", "Old"},
      {"UTF-16", std::string("\xFF\xFE<\0t\0i\0t\0l\0e\0>\0\xAC\x20<\0/\0t\0i\0t\0l\0e\0>\0", 34), "€"},
      {"Windows-1252", "<title>Caf\xE9</title>", "Café"},
      {"UTF-8", "<meta charset=utf-8><title>Caf\xC3\xA9</title>", "Café"}};
  for (const auto& [name, page, description] : cases) {
    EXPECT_EQ(Import(page), description) << name;
    EXPECT_EQ(Newest("LinkName") + Newest("available"), description + "True") << name;
    EXPECT_EQ(ReadFile(DataFolder + "\\Forms\\" + Newest("ID") + ".HTML"), page) << name;
    const auto* node = options.TreeOptions.Find("FORMS" + Newest("ID"));
    ASSERT_TRUE(node);
    EXPECT_EQ(node->text, description);
  }
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(OptionsFormsTest, WithoutATitleTheDescriptionIsAskedFor) {
  EXPECT_EQ(Import("<title>Two\nlines</title>", " Typed " + std::string(60, 'y')), "Typed " + std::string(43, 'y'));
  EXPECT_EQ(Import("", "Empty"), "Empty");
  EXPECT_EQ(Import("</title><title>no close", "Reversed"), "Reversed");
  EXPECT_EQ(Import("<title></title>", "Untitled"), "Untitled");
  const std::string id = Newest("ID");
  Import("<title>   </title>");
  EXPECT_EQ(desktop.boxes.back().title + desktop.boxes.back().text, "No TitleForms require a title, import cancelled");
  options.cmdForm(1).Press();  // no file chosen
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(Newest("ID"), id);
  EXPECT_FALSE(desktop.busy);
}

TEST_F(OptionsFormsTest, AFailedImportLeavesNothingBehind) {
  const std::string id = Newest("ID");
  desktop.files = {folder.Path() + "/missing.htm"};
  options.cmdForm(1).Press();
  EXPECT_EQ(desktop.boxes.back().text, "HTML import Failed");
  std::filesystem::rename(folder.Path() + "/Forms", folder.Path() + "/Kept");
  folder.File("Forms", "a file where the folder should be");
  Import("<title>No room</title>");
  EXPECT_EQ(desktop.boxes.size(), 2U);
  EXPECT_EQ(Newest("ID"), id);
  std::filesystem::rename(folder.Path() + "/Kept", folder.Path() + "/Forms2");
  LockDatabase();
  Import("<title>Locked</title>");
  EXPECT_EQ(desktop.boxes.back().text, "HTML import Failed");
  other.Rollback();
  EXPECT_EQ(Newest("ID"), id);
  std::filesystem::remove(folder.Path() + "/Forms");
  EXPECT_EQ(Import("<title>At last</title>"), "At last");  // the folder is made again
}

TEST_F(OptionsFormsTest, DetailsAreShownRenamedAndSavedEvenByCancel) {
  form->database.Plain().Execute("DELETE FROM Forms WHERE ID=4");
  Select("FORMS4");
  EXPECT_EQ(options.txtForms(0).Text(), "");
  Select("FORMS2");
  EXPECT_TRUE(options.FraForms.Visible() && options.cmdForm(1).Visible());
  EXPECT_EQ(options.txtForms(0).Text(), Ask("SELECT Description FROM Forms WHERE ID=2"));
  const std::string linkName = Ask("SELECT LinkName FROM Forms WHERE ID=2");
  options.txtForms(0).SetFocus();
  options.txtForms(0).Type(" Customer's page ");
  EXPECT_EQ(options.TreeOptions.Find("FORMS2")->text, " Customer's page ");
  Select("FORMS3");
  EXPECT_EQ(options.TreeOptions.Find("FORMS2")->text, " Customer`s page ");
  EXPECT_EQ(options.TreeOptions.Find("FORMS3")->text, Ask("SELECT Description FROM Forms WHERE ID=3"));
  EXPECT_EQ(Ask("SELECT Description FROM Forms WHERE ID=2"), "Customer`s page");
  EXPECT_EQ(Ask("SELECT LinkName FROM Forms WHERE ID=2"), linkName);
  Select("FORMS2");
  EXPECT_EQ(options.txtForms(0).Text(), "Customer`s page");
  options.txtForms(1).Type("Page");
  options.Cmd(1).Press();
  EXPECT_EQ(Ask("SELECT LinkName FROM Forms WHERE ID=2"), "Page");
  Select("GRAPHICS");
  EXPECT_FALSE(options.cmdForm(1).Visible());
}

TEST_F(OptionsFormsTest, OkTakesUnavailablePagesFromEverySupplier) {
  const std::string kLinks = "SELECT COUNT(*) FROM SupplierFormLink WHERE FormId=", kept = Ask(kLinks + "3");
  EXPECT_NE(Ask(kLinks + "2"), "0");
  Select("FORMS2");
  options.ChkFrmAvailable.SetValue(false);
  options.Cmd(2).Press();  // View keeps them
  EXPECT_NE(Ask(kLinks + "2"), "0") << "only OK removes them";
  options.Cmd(0).Press();
  EXPECT_EQ(Ask(kLinks + "2"), "0");
  EXPECT_EQ(Ask(kLinks + "3"), kept);
  EXPECT_EQ(form->forms.LvwForms.Find("ID2"), -1);
  EXPECT_NE(form->forms.LvwForms.Find("ID3"), -1);
}

TEST_F(OptionsFormsTest, AFailedSaveIsReportedAndTheWindowStays) {
  Select("FORMS2");
  options.ChkFrmAvailable.SetValue(false);
  LockDatabase();
  options.Cmd(3).Press();
  EXPECT_EQ(desktop.boxes.back().text, "Save form error");
  EXPECT_EQ(desktop.boxes.back().title, "Error");
  options.Cmd(0).Press();
  EXPECT_EQ(desktop.boxes.back().text, "Removing redundant form links");
  other.Rollback();
  EXPECT_EQ(Ask("SELECT available FROM Forms WHERE ID=2"), "True");
}

TEST_F(OptionsFormsTest, ViewAndDoubleClickShowThePageWithTheCurrentOptions) {
  Select("ALAISES0");
  options.TxtString.SetText("Vendor");
  Select("FORMS1");
  options.cmdForm(2).Press();
  const std::string opened = "open " + DataFolder + "\\Forms\\1_live.HTML|";
  EXPECT_TRUE(EqualNoCase(desktop.launched.back().substr(0, opened.size()), opened)) << desktop.launched.back();
  EXPECT_EQ(CalculatorPreferences.AliasSupplier.Trimmed(), "Vendor");
  desktop.launched.clear();
  options.TreeOptions.DblClick();
  EXPECT_EQ(desktop.launched.size(), 1U);
  Select("FORMS");
  options.TreeOptions.DblClick();
  EXPECT_EQ(desktop.launched.size(), 1U);
  std::filesystem::remove(folder.Path() + "/Forms/4.HTML");
  Select("FORMS4");
  options.cmdForm(2).Press();
  EXPECT_EQ(desktop.boxes.back().text, "HTML file creation failed");
}

TEST_F(OptionsFormsTest, EditingWarnsFirst) {
  const std::string page = DataFolder + "\\Forms\\3.HTML";
  WebServer = "forms.example";
  CustomerReference = "77";
  bool notepad = false;
  desktop.modal = [&](Window& window) {
    auto& warning = dynamic_cast<frmFormEditWarning&>(window);
    warning.LblWarning(1).Click();
    EXPECT_TRUE(
        desktop.launched.back().starts_with("open http://forms.example\\formInfo.asp?ref=77&emai=leases@example.com|"));
    warning.cmdaction(1).Press();
    EXPECT_TRUE(desktop.launched.back().find("options_Forms.HTM") != std::string::npos);
    EXPECT_FALSE(warning.Closed());
    warning.chkNotePad.SetValue(notepad);
    warning.cmdaction(0).Press();
    EXPECT_TRUE(warning.Closed());
  };
  Select("FORMS3");
  options.cmdForm(0).Press();
  EXPECT_TRUE(desktop.launched.back().starts_with("edit " + page + "|"));
  notepad = true;
  options.cmdForm(0).Press();
  EXPECT_EQ(desktop.launched.back(), "open notepad.exe|\"" + NativePath(page) + "\"|");
}

}  // namespace tarvolinex
