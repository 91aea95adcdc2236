// Finding, unpacking and opening the database file.
#pragma once

namespace tarvolinex {

// Opens the shared connection on `DataFolder`\Tarvolinex.mdb, closing it first when it is open. A failure is a fatal
// report of its number and description.
void ConnectDatabase();

// Unpacks a "Database.zip" that lies in `DataFolder`, or the delivered one when that is the app folder and holds no
// database; keeps its pristine copy as "Database.Bak" when it is the app folder, deletes it and sets
// `DatabaseUnpacked`. A database that it replaces is copied to the folder's "Backup" first. Returns false, after a
// report, when it could not be unpacked: what lay there stays.
bool UnpackDatabase();

// The whole sequence: unpack, find (asking the user when it is missing or askUser is set), remember the folder,
// connect, fill the lists, show the main window. Returns false when there is no database to open; nothing has then
// changed. askUser becomes true when the user agrees to look for the file. A database that cannot be opened is
// reported, and the user may choose another one; throws ProgramEnded when he does not.
bool OpenDatabase(bool& askUser);

// The same for a command without a window: unpack and connect, without asking and without remembering the folder.
// Returns false, after a report, when there is no database.
bool OpenDatabaseForCommand();

// Fills the forms list and the supplier list and loads the supplier that the list selects.
void LoadStartLists();

// Gives every contact of a fresh database the organisation's own e-mail address.
void PointContactsAtOrganisation();

}  // namespace tarvolinex
