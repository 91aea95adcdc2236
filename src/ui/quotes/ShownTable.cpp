#include "ui/quotes/ShownTable.h"

#include "controls/Desktop.h"
#include "exchange/TableOutput.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "publish/SheetValues.h"

namespace tarvolinex {

namespace {

// Two forms of one table, filled row by row.
struct BothForms {
  const std::vector<ListView::Column>& columns;
  std::string text = {}, html = "<table>";

  void Add(const std::vector<std::string>& cells, const std::string& tag) {
    html += "<tr>";
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::string cell = i < cells.size() ? cells[i] : std::string();
      text += (i ? "\t" : "") + cell;
      html += "<" + tag + (columns[i].rightAligned ? " align=\"right\">" : " align=\"left\">") + AsHtml(cell) + "</" +
              tag + ">";
    }
    text += "\n";
    html += "</tr>";
  }
};

}  // namespace

void CopyTable(const ListView& list) {
  const std::vector<ListView::Column>& columns = list.Columns();
  BothForms forms{columns};
  std::vector<std::string> cells;
  for (const ListView::Column& column : columns) cells.push_back(column.header);
  forms.Add(cells, "th");
  for (const ListView::Row& row : list.Rows()) {
    if (row.hidden) continue;
    cells = {row.text};
    cells.insert(cells.end(), row.cells.begin(), row.cells.end());
    forms.Add(cells, "td");
  }
  TheDesktop().CopyTable(forms.text, forms.html + "</table>");
}

bool SaveTable(Run& run, const std::string& title, const std::string& proposedName,
               const std::vector<SheetColumn>& columns, const std::string& rows) {
  const std::string path = TheDesktop().SaveFile(
      {title, "", proposedName,
       Tr("Spreadsheet (*.xlsx)|*.xlsx|Comma-separated values (*.csv)|*.csv|All files (*.*)|*.*")});
  if (path.empty()) return false;
  if (FileExists(path) && run.MessageBox(Tr("%1 exists. Replace it?", {path}), title, BoxButtons::YesNo,
                                         BoxIcon::Question) != Answer::Yes) {
    return false;
  }
  try {
    const auto output = TableOutput::To(path, columns, CsvReaders::Spreadsheets);
    output->Write(rows);
    output->Commit();
    run.SetNote(Tr("Saved %1", {path}));
    return true;
  } catch (const RuntimeError& failure) {
    run.ShowError(failure.Description());
    return false;
  }
}

}  // namespace tarvolinex
