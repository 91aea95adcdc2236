#include "platform/RuntimeError.h"
#include "support/Fixture.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/iconedit/IconFile.h"

namespace tarvolinex {

constexpr Colour kRed = 0x0000FF, kBlue = 0xFF0000, kWhite = 0xFFFFFF, kNavy = 0x800000;
constexpr Colour kShownLines = 0x004040, kHiddenLines = 0xFFC0FF;

class IconEditorTest : public ProgramTest {
 protected:
  // An icon with one pixel of a colour.
  static IconImage One(int x, int y, Colour colour) {
    IconImage image;
    image.Set(x, y, colour);
    return image;
  }
  IconEditorTest() {
    MakeFolder(DataFolder + "/icons");
    editor.RefreshIconList = [this](const std::string& name) { refreshed.push_back(name); };
    editor.SetLoadPic("");
  }
  // The middle of a cell.
  static int At(int cell) { return cell * 10 + 5; }
  void Press(int x, int y) { editor.Picture3.MouseDown(MouseButton::Left, At(x), At(y)); }
  void Release() { editor.Picture3.MouseUp(MouseButton::Left); }
  void Click(int x, int y) {
    Press(x, y);
    Release();
  }
  Colour Pixel(int x, int y) const { return editor.Image().At(x, y); }
  // The grid and, outside a stroke, the preview show the icon.
  void ExpectShown() {
    for (int i = 0; i < kIconSide * kIconSide; ++i) {
      const int x = i % kIconSide, y = i / kIconSide;
      ASSERT_EQ(editor.Picture3.Cell(x, y), Pixel(x, y)) << x << "," << y;
      ASSERT_EQ(editor.PicPreview.Cell(x, y), Pixel(x, y)) << x << "," << y;
    }
  }
  std::string Stored(const std::string& name) { return ReadFile(DataFolder + "/icons/" + name); }

  FrmIconEdit editor{run};
  std::vector<std::string> refreshed;
};

TEST_F(IconEditorTest, FillKeepsTheLinesVisible) {
  const std::pair<int, Colour> fills[] = {{0, kHiddenLines}, {15, kShownLines}, {1, kHiddenLines}, {2, kShownLines}};
  for (const auto& [box, lines] : fills) {
    editor.Picture2(box).Press();
    editor.Toolbar1.Press("fill");
    EXPECT_EQ(Pixel(31, 31), editor.CurrentColour());
    EXPECT_EQ(editor.Picture3.LineColour(), lines) << box;
  }
  editor.Picture4.Press();
  editor.Toolbar1.Press("fill");
  EXPECT_EQ(editor.Image(), IconImage());
  ExpectShown();
}

TEST_F(IconEditorTest, UndoTogglesTheLastChange) {
  editor.Picture2(12).Press();
  Click(0, 0);
  const IconImage one = editor.Image();
  Press(4, 4);
  editor.Picture3.MouseMove(At(9), At(4));
  Release();
  const IconImage two = editor.Image();
  for (const IconImage& image : {one, two, one, two}) {
    editor.MnuUndo.Choose();
    EXPECT_EQ(editor.Image(), image);
    ExpectShown();
  }
  // The lines belong to what is undone.
  editor.Picture2(1).Press();
  editor.Toolbar1.Press("fill");
  for (const Colour lines : {kShownLines, kHiddenLines}) {
    editor.Toolbar1.Press("undo");
    EXPECT_EQ(editor.Picture3.LineColour(), lines);
  }
  // A press that paints nothing leaves what can be undone alone.
  editor.MnuUndo.Choose();
  editor.Picture3.MouseDown(MouseButton::Left, 10, 10);
  Release();
  editor.MnuUndo.Choose();
  EXPECT_EQ(Pixel(8, 8), kNavy);
  // In the middle of a stroke the stroke ends first.
  editor.Picture2(15).Press();
  Press(0, 0);
  editor.MnuUndo.Choose();
  editor.Picture3.MouseMove(At(9), At(9));
  EXPECT_EQ(Pixel(0, 0), kNavy);
  EXPECT_EQ(Pixel(9, 9), kNavy);
  editor.MnuUndo.Choose();
  EXPECT_EQ(Pixel(0, 0), kWhite);
}

TEST_F(IconEditorTest, ANewIconAsksForItsNameAtEverySave) {
  editor.Picture2(15).Press();
  Click(3, 3);
  desktop.files = {"blue star", "", "  "};
  editor.MnuSave.Choose();
  EXPECT_EQ(Stored("BLUE STAR.ICO"), IconBytes(editor.Image()));
  EXPECT_EQ(editor.Caption(), "Icon Editor - blue star.ICO");
  EXPECT_EQ(refreshed, std::vector<std::string>({"blue star"}));
  EXPECT_FALSE(editor.Modified());
  const std::string first = Stored("BLUE STAR.ICO");
  Click(4, 4);
  editor.Toolbar1.Press("save");  // cancelled, then only blanks
  editor.MnuSave.Choose();
  EXPECT_TRUE(editor.Modified());
  desktop.files = {"an icon called blue star.ico"};  // the last 15 characters
  editor.MnuSaveAs.Choose();
  EXPECT_EQ(ListFiles(DataFolder + "/icons/*"), std::vector<std::string>({"BLUE STAR.ICO", "D BLUE STAR.ICO"}));
  EXPECT_EQ(Stored("BLUE STAR.ICO"), first);
  EXPECT_EQ(LoadIcon(DataFolder + "/icons/D BLUE STAR.ICO").At(4, 4), kWhite);
  desktop.files = {"ééééééééé ééééééé"};  // two bytes each
  editor.MnuSaveAs.Choose();
  EXPECT_TRUE(FileExists(DataFolder + "/icons/ÉÉÉÉÉÉÉ ÉÉÉÉÉÉÉ.ICO"));
}

TEST_F(IconEditorTest, AStoredIconIsSavedUnderItsName) {
  folder.File("icons/BLUE.ICO", IconBytes(One(5, 6, kBlue)));
  editor.SetLoadPic("BLUE.ICO");
  EXPECT_EQ(editor.Caption(), "Icon Editor - BLUE.ICO");
  EXPECT_EQ(Pixel(5, 6), kBlue);
  EXPECT_TRUE(editor.MayClose());
  editor.MnuUndo.Choose();  // to what was there before, and back
  EXPECT_EQ(editor.Image(), IconImage());
  editor.MnuUndo.Choose();
  EXPECT_EQ(Pixel(5, 6), kBlue);
  Click(7, 7);
  desktop.files = {"copy"};
  editor.MnuSaveAs.Choose();
  Click(8, 8);
  editor.MnuSave.Choose();  // the name it was opened with
  EXPECT_EQ(LoadIcon(DataFolder + "/icons/BLUE.ICO"), editor.Image());
  EXPECT_NE(Stored("COPY.ICO"), Stored("BLUE.ICO"));
  EXPECT_EQ(refreshed, std::vector<std::string>({"copy", "BLUE"}));
}

TEST_F(IconEditorTest, OpenTakesOnlyIconsOf766Bytes) {
  const IconImage image = One(2, 3, kBlue);
  const std::string good = IconBytes(image);
  for (const std::string& bad : {good + std::string(312, '\0'), std::string(766, 'x')}) {
    desktop.files = {folder.File("some.ico", bad)};
    editor.Toolbar1.Press("open");
    EXPECT_EQ(desktop.boxes.back().text, "Ivalid or unsupported file format.");
    EXPECT_EQ(desktop.boxes.back().icon, BoxIcon::Critical);
    EXPECT_EQ(editor.Image(), IconImage());
    EXPECT_FALSE(editor.Modified());
  }
  editor.Toolbar1.Press("open");  // cancelled
  EXPECT_EQ(desktop.boxes.size(), 2U);
  desktop.files = {folder.File("some.ico", good)};
  editor.Toolbar1.Press("open");
  EXPECT_EQ(editor.Image(), image);
  EXPECT_EQ(editor.Caption(), "Icon Editor <new Icon>");
  EXPECT_TRUE(editor.Modified());
  editor.MnuUndo.Choose();
  EXPECT_EQ(editor.Image(), IconImage());
}

TEST_F(IconEditorTest, ADamagedIconIsReportedAndNeverReplaced) {
  folder.File("icons/BAD.ICO", std::string(766, 'x'));
  editor.SetLoadPic("BAD.ICO");
  EXPECT_EQ(desktop.boxes.back().text, "Invalid or unsupported file format.");
  EXPECT_EQ(editor.Caption(), "Icon Editor <new Icon>");
  editor.MnuSave.Choose();
  EXPECT_EQ(Stored("BAD.ICO"), std::string(766, 'x'));
}

TEST_F(IconEditorTest, ANameThatNoFileCanHaveWritesNothing) {
  Click(1, 1);
  for (const char* bad : {"..\\evil", "../evil", "con.x"}) {
    desktop.files = {bad};
    editor.MnuSave.Choose();
    EXPECT_NE(desktop.boxes.back().text.find("cannot be the name of an icon"), std::string::npos) << bad;
    EXPECT_NE(desktop.boxes.back().text.find("COM1 to COM9"), std::string::npos);
    EXPECT_TRUE(editor.Modified());
  }
  EXPECT_TRUE(ListFiles(DataFolder + "/icons/*").empty());
  EXPECT_TRUE(ListFiles(DataFolder + "/*").empty());
  EXPECT_TRUE(refreshed.empty());
}

TEST_F(IconEditorTest, ABadNameThatAnIconHasIsToldAndAnotherAskedFor) {
  const std::string bytes = IconBytes(One(5, 6, kBlue));
  folder.File("icons/COM1.ICO", bytes);
  editor.SetLoadPic("COM1.ICO");
  Click(1, 1);
  desktop.files = {"fine"};
  editor.MnuSave.Choose();
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(Stored("COM1.ICO"), bytes);
  EXPECT_EQ(Stored("FINE.ICO"), IconBytes(editor.Image()));
}

TEST_F(IconEditorTest, ClosingAsksAboutChanges) {
  Click(1, 1);
  desktop.answers = {Answer::Cancel};
  EXPECT_FALSE(editor.MayClose());
  EXPECT_EQ(desktop.boxes.back().text, "Save icon?");
  EXPECT_EQ(desktop.boxes.back().buttons, BoxButtons::YesNoCancel);
  desktop.answers = {Answer::Yes};  // and no name
  editor.MnuExit.Choose();
  EXPECT_FALSE(editor.Closed());
  desktop.answers = {Answer::No};
  EXPECT_TRUE(editor.MayClose());
  EXPECT_TRUE(refreshed.empty());
  desktop.answers = {Answer::Yes};
  desktop.files = {"kept"};
  editor.MnuExit.Choose();
  EXPECT_TRUE(editor.Closed());
  EXPECT_EQ(Stored("KEPT.ICO"), IconBytes(editor.Image()));
}

}  // namespace tarvolinex
