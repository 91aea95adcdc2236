// Finding, unpacking and opening the database file.
#pragma once

namespace tarvolinex {

// Opens the shared connection on `DataFolder`\Tarvolinex.mdb, closing it first when it is open. A failure is a fatal
// report of its number and description.
void ConnectDatabase();

// Unpacks a delivered "Database.zip" that lies in `DataFolder`, keeps its pristine copy as "Database.Bak" when that is
// the app folder, deletes it and sets `DatabaseUnpacked`. Returns false, after a report, when it could not be
// unpacked: the package stays.
bool UnpackDatabase();

// The whole sequence: unpack, find (asking the user when it is missing or askUser is set), remember the folder,
// connect, fill the lists, show the main window. Returns false when there is no database to open; nothing has then
// changed. askUser becomes true when the user agrees to look for the file.
bool OpenDatabase(bool& askUser);

// The same for a command without a window: unpack and connect, without asking and without remembering the folder.
// Returns false, after a report, when there is no database.
bool OpenDatabaseForCommand();

// Fills the forms list and the supplier list and loads the supplier that the list selects.
void LoadStartLists();

// Gives every contact of a fresh database the organisation's own e-mail address.
void PointContactsAtOrganisation();

}  // namespace tarvolinex
