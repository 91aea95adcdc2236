// The icon editor: draws a 32 by 32 icon on an enlarged grid and keeps it in the data folder's icons.
#pragma once

#include <functional>
#include <string>

#include "controls/Controls.h"
#include "controls/PaintControls.h"
#include "core/Run.h"
#include "ui/iconedit/IconImage.h"

namespace tarvolinex {

class FrmIconEdit : public Window {
 public:
  explicit FrmIconEdit(Run& run);

  // Before the window is shown: loads an icon of the data folder by its file name ("BLUE.ICO"), or starts a new one
  // for an empty name. A file that is no icon of 32 by 32 points is reported and a new icon started, so that no later
  // Save replaces it.
  void SetLoadPic(const std::string& iconName);
  // Writes the icon under that name, whole or not at all, and calls RefreshIconList. A failure to write is passed
  // over: the old file stays. A name that no file can have writes nothing.
  void SavePic(const std::string& iconName);

  // Set by whoever lists the icons: the list is filled anew and the icon of that name selected.
  std::function<void(const std::string& iconName)> RefreshIconList;

  const IconImage& Image() const { return image_; }
  Colour CurrentColour() const { return current_; }
  bool Modified() const { return modified_; }

  Menu MnuFile, MnuSave, MnuSaveAs, MnuExit, MnuEdit, MnuUndo, MnuEffects, MnuFlipHorizontal, MnuFlipVertical,
      MnuRotate, MnuChangeColour, MnuHelp;
  Toolbar Toolbar1;
  PixelGrid Picture3;                // the enlarged icon
  ControlArray<ColourBox> Picture2;  // the palette
  ColourBox Picture4;                // transparent
  ColourBox Picture5;                // the current colour
  Label LblCurrent;
  PixelGrid PicPreview;
  Label LblPreview;

 private:
  struct Snapshot {
    IconImage image;
    Colour lineColour = 0;
  };

  void MakeToolbar();
  void MakeMenus();
  void MakePalette();
  void StartDrawing();
  void ToolbarClick(const std::string& key);

  void Open();
  void Save();
  void SaveAs();
  bool MayLeave();

  // The frame of every change: what was is kept, then what has become of it.
  void Before();
  void After();
  void Apply(const std::function<void(IconImage&)>& change);
  Snapshot Taken() const { return {image_, Picture3.LineColour()}; }
  void Undo();

  void SelectTool(bool changeColour);
  void SelectColour(int box);  // kPaletteSize for the transparent one
  static std::string ColourName(Colour colour);
  void Fill();
  void ToggleGrid();

  void Picture3_MouseDown(MouseButton button, int x, int y);
  void Picture3_MouseMove(int x, int y);
  void Picture3_MouseUp(MouseButton button);
  void PickColour(Colour colour);
  void PaintTo(int x, int y);
  void ChangeColour(Colour from);
  void EndStroke();

  Run& run_;
  IconImage image_;
  Colour current_ = 0;
  std::string name_;  // that the editor was opened with
  bool modified_ = false;
  bool changingColour_ = false;  // the tool; else paint
  bool painting_ = false;        // a press with the paint tool is held
  bool pressed_ = false;         // a press has begun a change whose "after" is not kept yet
  IconCell last_;                // of the stroke; may lie outside the picture
  Snapshot before_, after_;
  bool undone_ = false;
};

// Opens the editor on an icon of the data folder by its file name, or on a new icon for an empty name, and returns when
// it is closed. `refresh` is called with the name after every save.
void EditIcon(Run& run, const std::string& iconName, std::function<void(const std::string& iconName)> refresh);

}  // namespace tarvolinex
