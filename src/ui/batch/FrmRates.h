// Changes the rate cards of several suppliers at once, after showing what becomes of each.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "exchange/RateChange.h"

namespace tarvolinex {

class FrmRates : public Window {
 public:
  // The supplier whose rate card can be copied.
  struct Source {
    int id;
    std::string name;
    bool copies;  // the window begins with copying
  };
  // stored: told what takes the change back. The run and the database must outlive the window.
  FrmRates(Run& run, Database& database, const Source& source, std::function<void(RemovedRows)> stored);

  Label LblAction;
  ComboBox CboAction;
  Label LblField;
  ComboBox CboField;
  Label LblAmount;
  TextBox TxtAmount;
  ListView LvwSuppliers;  // the ticked ones are changed
  Label LblSummary;
  CommandButton CmdAll, CmdNone, CmdApply, CmdClose;

 private:
  struct Field {
    std::string name;
    std::vector<std::string> columns;
  };
  void FillFields();
  void FillSuppliers();
  void TickAll(bool ticked);
  std::vector<int> Ticked() const;
  void Plan();
  ImportPlan Planned() const;
  void ShowPlan();
  void Apply();

  Run& run_;
  Database& database_;
  const Source source_;
  std::function<void(RemovedRows)> stored_;
  std::vector<Field> fields_;
  std::optional<ImportPlan> plan_;
};

}  // namespace tarvolinex
