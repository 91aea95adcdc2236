#include "ui/main/SupplierPanel.h"

#include <array>
#include <utility>

#include "platform/text/Text.h"
#include "store/Statements.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

constexpr std::array<BoundField, kSupplierFields> kSupplierFieldTags = {{
    {{Marked("Supplier &Name"), Marked("<SUPPLIER> &Name")}, "RS=SUPPLIER;FIELDNAME=CompanyName;NODEF=0"},
    {{Marked("Add&ress")}, "RS=SUPPLIER;FIELDNAME=Address1;NODEF=0"},
    {{""}, "RS=SUPPLIER;FIELDNAME=Address2;NODEF=0"},
    {{Marked("To&wn")}, "RS=SUPPLIER;FIELDNAME=Town;NODEF=0"},
    {{Marked("Co&unty")}, "RS=SUPPLIER;FIELDNAME=County;NODEF=0"},
    {{Marked("&Post Code")}, "RS=SUPPLIER;FIELDNAME=PostCode;NODEF=0"},
    {{Marked("Head Office Tel")}, "RS=SUPPLIER;FIELDNAME=tel;NODEF=0"},
    {{Marked("Head Office Fa&x")}, "RS=SUPPLIER;FIELDNAME=fax;NODEF=0"},
    {{Marked("Head Office E&mail")}, "RS=SUPPLIER;FIELDNAME=email;NODEF=0"},
    {{Marked("We&b Address")}, "RS=SUPPLIER;FIELDNAME=www;NODEF=0"},
    {{Marked("Equipment T&ype"), Marked("<CAPEQUIP> T&ype")}, "RS=SUPPLIER;FIELDNAME=equipment;NODEF=0"},
}};

}  // namespace

SupplierPanel::SupplierPanel(Window& window, Run& run, ShownSupplier& shown)
    : FraSupplier(window, "FraSupplier", -1, Tr("Supplier")),
      LblSupplier(window, "LblSupplier", kSupplierFields),
      TxtSupplier(window, "TxtSupplier", kSupplierFields),
      run_(run) {
  FraSupplier.SetTag(OwnWordsTag("<SUPPLIER>"));
  for (int i = 0; i < kSupplierFields; ++i) {
    const BoundField& bound = kSupplierFieldTags[static_cast<std::size_t>(i)];
    SetWords(LblSupplier(i), bound.words);
    TextBox& field = TxtSupplier(i);
    field.SetTag(bound.tag);
    field.Change = [this, i, &shown] {
      const bool changedBefore = std::exchange(shown.SupplierChanged, true);
      if (Changed) Changed(i, changedBefore);
    };
    field.Validate = [&field] { field.SetText(EscapeQuotes(field.Text())); };
    field.LostFocus = [this, i] { TxtSupplier_LostFocus(i); };
  }
}

bool SupplierPanel::Nameless() const {
  return Trim(Name().Text()).empty();
}

std::string SupplierPanel::WordsOf(const Control* field) const {
  constexpr int kSecondAddress = 2;
  for (int i = 0; i < kSupplierFields; ++i) {
    if (field != &TxtSupplier(i)) continue;
    return i == kSecondAddress ? Tr("Address 2") : PlainCaption(LblSupplier(i).Caption());
  }
  return {};
}

void SupplierPanel::TxtSupplier_LostFocus(int field) {
  if (field != kSupplierName || !Nameless() || Name().Owner().KeepsFocus()) return;
  run_.MessageBox(run_.ReplaceAliases("You must enter a <SUPPLIER> name"), "", BoxButtons::Ok, BoxIcon::None);
  Name().SetFocus();
}

}  // namespace tarvolinex
