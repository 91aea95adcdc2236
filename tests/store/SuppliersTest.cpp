#include "store/Suppliers.h"

#include "platform/text/Text.h"
#include "support/Fixture.h"

namespace tarvolinex {

class SuppliersTest : public SampleTest {
 protected:
  void ExecuteRaw(const std::string& statement) { form->database.Plain().Execute(statement); }
  std::string FormatTextOf(const std::string& column) {
    return FormatFixed(std::stod(Ask("SELECT " + column + " FROM suppliers WHERE ID=3")), 2);
  }
};

TEST_F(SuppliersTest, SelectingASupplierFillsItsFields) {
  Choose("Saxonholt Dental Systems Ltd");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->supplier.TxtSupplier(3).Text(), "Reading");
  EXPECT_EQ(form->supplier.TxtSupplier(kSupplierName).MaxLength(), 50);
  EXPECT_EQ(form->LblCompany.Caption(), "*Saxonholt Dental Systems Ltd*");
  EXPECT_EQ(form->rateCard.txtRangeTo(1).Text(), FormatTextOf("RangeEquipFROM0"));
  EXPECT_EQ(form->rateCard.lblRangeFrom(0).Caption(), form->rateCard.txtRangeTo(1).Text());
  EXPECT_EQ(SupplierCalcSettings.ID, 3);
  EXPECT_EQ(form->send.lvSendContacts.Columns().size(), 3U);
  EXPECT_EQ(form->contacts.LstContacts.Items().size(),
            std::stoul(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid=3")));
}

TEST_F(SuppliersTest, ASupplierThatIsGoneIsReported) {
  ExecuteRaw("DELETE FROM suppliers WHERE ID=3");
  Choose("Saxonholt Dental Systems Ltd");
  EXPECT_EQ(desktop.boxes.at(0).text, "Dealer Not Found Or has been deleted");
  EXPECT_EQ(form->LvwSuppliers.Count(), 11);
  // What is shown is the selected supplier, so that typing goes on in it.
  EXPECT_EQ(form->shown.CurrentSupplierId, 1);
  EXPECT_EQ(form->supplier.TxtSupplier(kSupplierName).Text(), "Aldermoor Print Finishing Ltd");
}

TEST_F(SuppliersTest, FormsWithoutAPageAreNotOffered) {
  EXPECT_EQ(form->forms.LvwForms.Count(), 4);
  DeleteFile(DataFolder + "\\forms\\2.html");
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(form->forms.LvwForms.Count(), 3);
  EXPECT_EQ(form->forms.LvwForms.Find("ID2"), -1);
}

TEST_F(SuppliersTest, TheListIsInTheOrderOfTheNames) {
  ExecuteRaw("UPDATE suppliers SET CompanyName='' WHERE ID=3");
  ExecuteRaw("UPDATE suppliers SET CompanyName='ÉCLAIR' WHERE ID=4");
  ExecuteRaw("UPDATE suppliers SET CompanyName='éclair' WHERE ID=2");
  ExecuteRaw("UPDATE suppliers SET CompanyName=NULL WHERE ID=5");
  ExecuteRaw("UPDATE suppliers SET CompanyName='aldermoor PRINT', Town=NULL WHERE ID=6");
  form->menus.MnuRefresh.Choose();
  const ListView& list = form->LvwSuppliers;
  ASSERT_EQ(list.Count(), 12);
  EXPECT_EQ(list.At(0).key + list.At(1).key + list.At(2).key + list.At(3).key, "ID3ID5ID6ID1");
  EXPECT_EQ(list.At(0).text, "<NEW>");
  EXPECT_EQ(list.At(0).toolTip, "Double click to view <> calculator");
  EXPECT_EQ(list.At(2).cells[3], "");
  EXPECT_EQ(list.At(3).toolTip, "Double click to view <Aldermoor Print Finishing Ltd> calculator");
  EXPECT_EQ(list.At(10).key + list.At(11).key, "ID2ID4");  // the same to the order: by ID
}

}  // namespace tarvolinex
