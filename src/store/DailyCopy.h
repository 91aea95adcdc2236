// Copies of the database for the day on which something goes wrong.
#pragma once

namespace tarvolinex {

// Before the first write of a day: copies the database to `DataFolder`\Backup, named by the date, and keeps the five
// newest. A copy that cannot be made is passed over; the work in hand goes on.
void KeepDailyCopy();

}  // namespace tarvolinex
