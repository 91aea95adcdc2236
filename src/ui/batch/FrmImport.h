// Takes suppliers, contacts or an old database in, after showing what each row would do.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "exchange/ImportPlan.h"

namespace tarvolinex {

class FrmImport : public Window {
 public:
  // stored: told what takes the import back. The run and the database must outlive the window.
  FrmImport(Run& run, Database& database, std::function<void(RemovedRows)> stored);

  Label LblKind;
  ComboBox CboKind;  // suppliers, contacts, an old database
  CommandButton CmdFile;
  Label LblFile;
  CheckBox ChkHeading;  // the first row names the columns
  Label LblColumn;
  ComboBox CboColumn;  // of the file
  Label LblField;
  ComboBox CboField;  // what the column is; the choice is remembered by the column's name
  ListView LvwRows;
  Label LblSummary;
  CommandButton CmdImport, CmdClose;

 private:
  bool IsTable() const;
  ImportKind Kind() const;
  void ChooseFile();
  void Read();
  void ReadTable();
  // As the heading says, then as the user has chosen for columns of these names before.
  void GuessColumns();
  void FillColumns();
  void ShowField();
  void TakeField();
  void Plan();
  void ShowPlan();
  void Store();
  std::string NameOfColumn(std::size_t column) const;

  Run& run_;
  Database& database_;
  std::function<void(RemovedRows)> stored_;
  std::string path_;
  std::vector<TextRow> rows_;  // of the file, the heading among them
  std::vector<std::string> known_;
  ColumnChoice choice_;
  std::optional<ImportPlan> plan_;
  bool filling_ = false;
};

}  // namespace tarvolinex
