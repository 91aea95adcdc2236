// The one road of failures: what a platform service throws, and the end of the program.
#pragma once

#include <exception>
#include <string>

namespace tarvolinex {

// Numbers that the program tells apart; every other failure carries its own.
enum ErrorNumber {
  kOverflow = 6,
  kBadFileName = 52,
  kFileNotFound = 53,
  kFileAlreadyOpen = 55,
  kDeviceError = 57,
  kDiskFull = 61,
  kPathAccess = 75,
  kPathNotFound = 76,
  kNoCurrentRecord = 3021,
  kItemNotFound = 3265,
  kDatabase = 3100,
  kDatabasePassword = 3101,  // missing or wrong
  kDatabaseGone = 3102,      // its server, and nobody waits for it any more; or with it what was about to be stored
  kBadArchive = 3200,
  kBadPicture = 481,
  kLimits = 3300,  // limits that contradict each other
  // Mail and web services.
  kMailFailed = 32002,
  kMailLoginRefused = 32003,
  kMailAttachmentMissing = 32011,
  kMailRecipientRefused = 32014,
  kMailSignedOnAlready = 32050,
  kNotConnected = 35754,
};

// A failed operation of a platform service. The procedure that owns the report catches it and calls ShowError.
class RuntimeError : public std::exception {
 public:
  // description: what was being done and the value at fault (a path, a statement), for people to read.
  RuntimeError(int number, std::string description) : number_(number), description_(std::move(description)) {}
  int Number() const { return number_; }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
};

// Thrown by a fatal report: stacks unwind, files close and nothing more is saved. Only the program's outermost level
// and the event boundary of the drawn windows catch it.
struct ProgramEnded {
  int status = 1;  // exit status of the program
};

}  // namespace tarvolinex
