// Every statement that the program issues, and how its placeholders are filled.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Database.h"

namespace tarvolinex {

// Placeholders in angle brackets are matched without regard to case. Text values stand between quotes in the template.
namespace statements {
inline constexpr std::string_view kSuppliers = "SELECT * FROM suppliers ORDER BY CompanyName";
inline constexpr std::string_view kSupplier = "SELECT * FROM suppliers WHERE ID=<ID>";
inline constexpr std::string_view kSupplierId = "SELECT ID FROM suppliers WHERE ID=<ID>";
inline constexpr std::string_view kDefaultSupplier = "SELECT * FROM Defaultsupplier";
inline constexpr std::string_view kDeleteSupplier = "DELETE FROM suppliers WHERE id=<ID>";
inline constexpr std::string_view kDeleteDefaultSupplier = "DELETE FROM DefaultSupplier";
inline constexpr std::string_view kUpdateDefaultSupplier = "UPDATE DefaultSupplier SET <VALUES>";
inline constexpr std::string_view kUpdateSupplier = "UPDATE Suppliers SET <VALUES> WHERE ID = <ID>";
inline constexpr std::string_view kInsertSupplier = "INSERT INTO Suppliers (<FIELDS>) VALUES(<VALUES>)";
inline constexpr std::string_view kInsertDefaultSupplier = "INSERT INTO defaultSupplier (<FIELDS>) VALUES(<VALUES>)";
inline constexpr std::string_view kFormLinks = "SELECT * FROM SupplierFormLink WHERE supplierid = <ID>";
inline constexpr std::string_view kAllFormLinks = "SELECT * FROM SupplierFormLink";
inline constexpr std::string_view kDeleteFormLinks = "DELETE FROM SupplierFormLink WHERE Supplierid = <ID>";
inline constexpr std::string_view kInsertFormLink = "INSERT INTO SupplierFormLink  VALUES(<formid>, <supplierid>)";
inline constexpr std::string_view kDeleteUnavailableLinks =
    "DELETE FROM SupplierFormLink WHERE formid IN (SELECT ID FROM forms WHERE available=no)";
inline constexpr std::string_view kAvailableForms = "SELECT * FROM Forms WHERE AVAILABLE=yes ORDER BY description";
inline constexpr std::string_view kForms = "SELECT * FROM Forms  ORDER BY description";
inline constexpr std::string_view kForm = "SELECT * FROM Forms WHERE ID=<ID>";
inline constexpr std::string_view kNewestForm = "SELECT MAX(ID) as maxid FROM forms";
inline constexpr std::string_view kInsertForm =
    "INSERT INTO Forms (Description,LinkName,available) VALUES('<DESCRIPTION>','<LINKNAME>', <AVAILABLE>)";
inline constexpr std::string_view kUpdateForm =
    "UPDATE forms SET description='<DESCRIPTION>' , linkname = '<LINKNAME>', available=<AVAILABLE> WHERE ID=<ID>";
inline constexpr std::string_view kLinkedForms =
    "SELECT Forms.* FROM Forms INNER JOIN SupplierFormLink ON Forms.ID = SupplierFormLink.FormId WHERE "
    "SupplierFormLink.supplierid = <ID>";
inline constexpr std::string_view kContacts =
    "SELECT * FROM contacts WHERE Supplierid = <SUPPLIERID> ORDER BY Surname, firstname";
inline constexpr std::string_view kContact = "SELECT * FROM contacts WHERE ID=<ID> AND Supplierid = <SUPPLIERID>";
inline constexpr std::string_view kUpdateContact = "UPDATE contacts SET <VALUES> WHERE ID=<ID>";
inline constexpr std::string_view kInsertContact =
    "INSERT INTO CONTACTS(firstname, surname, jobtitle, tel, fax, email, Supplierid) VALUES "
    "('<FIRSTNAME>','<SURNAME>', '<JOBTITLE>', '<tel>', '<fax>','<EMAIL>',<Supplierid>)";
inline constexpr std::string_view kRestoreContact = "INSERT INTO contacts (<FIELDS>) VALUES(<VALUES>)";
inline constexpr std::string_view kDeleteContact = "DELETE FROM contacts WHERE ID=<ID>";
inline constexpr std::string_view kDeleteContacts = "DELETE FROM contacts WHERE supplierid=<supplierID>";
inline constexpr std::string_view kDateSent = "UPDATE contacts SET DateLastSent='<DATESENT>' WHERE ID=<ID>";
inline constexpr std::string_view kAllEmails = "UPDATE contacts SET email='<EMAIL>'";
inline constexpr std::string_view kFindContacts =
    "SELECT Supplierid,id FROM contacts WHERE Surname LIKE '<SURNAME>%' AND firstname LIKE '<FIRSTNAME>%'";
// Rows of any table, as exchange and changes to many suppliers read and write them.
inline constexpr std::string_view kTableById = "SELECT * FROM <TABLE> ORDER BY ID";
inline constexpr std::string_view kContactsById =
    "SELECT contacts.*, suppliers.CompanyName FROM contacts LEFT JOIN suppliers ON suppliers.ID=contacts.Supplierid "
    "ORDER BY contacts.ID";
inline constexpr std::string_view kLargestId = "SELECT MAX(ID) AS largest FROM <TABLE>";
inline constexpr std::string_view kRowOfId = "SELECT ID FROM <TABLE> WHERE ID=<ID>";
inline constexpr std::string_view kInsertRow = "INSERT INTO <TABLE> (<FIELDS>) VALUES(<VALUES>)";
inline constexpr std::string_view kUpdateRow = "UPDATE <TABLE> SET <VALUES> WHERE ID=<ID>";
// Rows of a table whose column holds one of some numbers.
inline constexpr std::string_view kDeleteRows = "DELETE FROM <TABLE> WHERE <COLUMN> IN (<IDS>)";
inline constexpr std::string_view kDeleteFormLink =
    "DELETE FROM SupplierFormLink WHERE FormId=<formid> AND SupplierId=<supplierid>";
// Files that all desks of a server share.
inline constexpr std::string_view kOfficeFiles = "SELECT ID, Name, Print FROM OfficeFiles";
inline constexpr std::string_view kOfficeFile = "SELECT Content FROM OfficeFiles WHERE ID=<ID>";
inline constexpr std::string_view kOfficeFileId = "SELECT ID FROM OfficeFiles WHERE Name LIKE '<NAME>'";
inline constexpr std::string_view kInsertOfficeFile =
    "INSERT INTO OfficeFiles (Name, Print, Content) VALUES('<NAME>', '<PRINT>', '<CONTENT>')";
inline constexpr std::string_view kDeleteOfficeFile = "DELETE FROM OfficeFiles WHERE ID=<ID>";
// Contents that are stored once.
inline constexpr std::string_view kInsertContent = "INSERT OR IGNORE INTO <TABLE> (Content) VALUES('<CONTENT>')";
inline constexpr std::string_view kFindContent = "SELECT ID FROM <TABLE> WHERE Content='<CONTENT>'";
// Quotes that were kept.
inline constexpr std::string_view kKeptQuotes = "SELECT * FROM KeptQuotes ORDER BY ID";
inline constexpr std::string_view kKeptQuote = "SELECT * FROM KeptQuotes WHERE ID=<ID>";
inline constexpr std::string_view kKeptRecord = "SELECT * FROM KeptRecords WHERE ID=<ID>";
inline constexpr std::string_view kInsertKeptQuote = "INSERT INTO KeptQuotes (<FIELDS>) VALUES(<VALUES>)";
inline constexpr std::string_view kUpdateKeptQuote =
    "UPDATE KeptQuotes SET Customer='<CUSTOMER>', CustomerEmail='<EMAIL>', CustomerTel='<TEL>', "
    "Equipment='<EQUIPMENT>', Reference='<REFERENCE>', Note='<NOTE>', StartDate=<START>, ValidUntil=<VALIDUNTIL>, "
    "State='<STATE>' WHERE ID=<ID>";
inline constexpr std::string_view kDeleteKeptQuote = "DELETE FROM KeptQuotes WHERE ID=<ID>";
// What has gone out.
inline constexpr std::string_view kDeliveredContents = "SELECT * FROM DeliveredContents";
inline constexpr std::string_view kInsertDelivery =
    "INSERT INTO Deliveries (SentAt, SupplierId, CompanyName, ContactId, Contact, Email, SentAs, Result, Message, "
    "OrganisationContent, SupplierContent) VALUES('<DATE>', <SUPPLIERID>, '<COMPANYNAME>', <CONTACTID>, '<CONTACT>', "
    "'<EMAIL>', '<SENTAS>', '<RESULT>', <MESSAGE>, <ORGANISATION>, <SUPPLIER>)";
inline constexpr std::string_view kDeliveries = "SELECT * FROM Deliveries";
inline constexpr std::string_view kLastDelivery =
    "SELECT * FROM Deliveries WHERE SupplierId=<SUPPLIERID> AND Result='sent' ORDER BY ID DESC";
inline constexpr std::string_view kDeliveredContent = "SELECT Content FROM DeliveredContents WHERE ID=<ID>";
inline constexpr std::string_view kFindDelivery =
    "SELECT ID FROM Deliveries WHERE SentAt='<DATE>' AND SupplierId=<SUPPLIERID> AND ContactId=<CONTACTID>";
inline constexpr std::string_view kDeliveryMessage =
    "SELECT DeliveredContents.* FROM DeliveredContents INNER JOIN Deliveries ON DeliveredContents.ID = "
    "Deliveries.Message WHERE Deliveries.ID = <ID>";
// What the office has in common.
inline constexpr std::string_view kOfficeFields = "SELECT * FROM Office";
inline constexpr std::string_view kDeleteOfficeField = "DELETE FROM Office WHERE Name='<NAME>'";
inline constexpr std::string_view kInsertOfficeField =
    "INSERT INTO Office (Name, Content) VALUES('<NAME>', '<CONTENT>')";
// Who has changed what last.
inline constexpr std::string_view kForgetChange = "DELETE FROM Changes WHERE What='<WHAT>' AND RowId=<ROWID>";
inline constexpr std::string_view kInsertChange =
    "INSERT INTO Changes (What, RowId, ChangedBy, ChangedAt) VALUES('<WHAT>', <ROWID>, '<NAME>', '<DATE>')";
inline constexpr std::string_view kMakers = "SELECT * FROM Changes WHERE What='<WHAT>'";
inline constexpr std::string_view kLastChange = "SELECT * FROM Changes WHERE What='<WHAT>' AND RowId=<ROWID>";
// The run of letters that is on its way.
inline constexpr std::string_view kDeleteLetters = "DELETE FROM Letters";
inline constexpr std::string_view kLetters = "SELECT * FROM Letters ORDER BY ID";
inline constexpr std::string_view kInsertLetter =
    "INSERT INTO Letters (SupplierId, CompanyName, ContactId, Contact, FirstName, Email, Subject, Message, Way, "
    "Instructions, State, Detail) VALUES(<SUPPLIERID>, '<COMPANYNAME>', <CONTACTID>, '<CONTACT>', '<FIRSTNAME>', "
    "'<EMAIL>', '<SUBJECT>', '<MESSAGE>', <WAY>, <INSTRUCTIONS>, 'waiting', '')";
inline constexpr std::string_view kLetterState = "UPDATE Letters SET State='<STATE>', Detail='<DETAIL>' WHERE ID=<ID>";
inline constexpr std::string_view kLetterReader =
    "UPDATE Letters SET Contact='<CONTACT>', FirstName='<FIRSTNAME>', Email='<EMAIL>' WHERE ID=<ID>";
inline constexpr std::string_view kClaimLetter =
    "UPDATE Letters SET State='sending', Detail='' WHERE ID=<ID> AND State='waiting'";
}  // namespace statements

// A placeholder and the value whose text takes its place (Null: nothing).
struct Filling {
  std::string_view placeholder;
  Value value;
};
// Every occurrence of each placeholder, in one pass: what was put in is not searched again.
std::string FillStatement(std::string_view statement, const std::vector<Filling>& fillings);
std::string FillStatement(std::string_view statement, std::string_view placeholder, const Value& value);
std::string FillStatement(std::string_view statement, std::string_view placeholder, int value);

// "A = 'x' ,B =YES,", "A,B," and "'x' ,YES,": fields of a row for its statements. Each list ends with a comma. The
// assignments are those of the fields that were edited, the other two lists hold all; a field that was not edited has
// the value as it is stored.
struct FieldLists {
  std::string assignments, columns, values;
};
std::string WithoutLast(const std::string& list);

// The value, or the fallback for Null.
Value NullToDefault(const Value& value, const Value& fallback = std::string());

// Apostrophes become grave accents, so that the text can stand between quotes in a statement.
std::string EscapeQuotes(std::string_view text);

// The same for a text that is to be stored as it is: they are doubled.
std::string DoubleQuotes(std::string_view text);

}  // namespace tarvolinex
