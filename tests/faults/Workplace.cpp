#include "faults/Workplace.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>

#include "platform/RuntimeError.h"
#include "platform/data/Database.h"
#include "platform/files/Files.h"

namespace tarvolinex {

namespace fs = std::filesystem;

void Workplace::Keep() const {
  fs::remove_all(root_.Path() + "/kept");
  fs::copy(Work(), root_.Path() + "/kept", fs::copy_options::recursive);
}

void Workplace::Restore() const {
  fs::remove_all(Work());
  fs::copy(root_.Path() + "/kept", Work(), fs::copy_options::recursive);
}

int Workplace::Run(const std::function<int()>& job) const {
  const pid_t child = fork();
  if (child == 0) {
    const int words = ::open((root_.Path() + "/words").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(words, STDOUT_FILENO);
    dup2(words, STDERR_FILENO);
    int status = 70;
    try {
      status = job();
    } catch (const std::exception& failure) {
      std::cerr << failure.what() << '\n';
    } catch (const ProgramEnded&) {
      std::cerr << "the program ended\n";
    }
    std::cout.flush();
    _exit(status);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

std::string Workplace::Words() const {
  return ReadFile(root_.Path() + "/words");
}

std::map<std::string, std::string> Workplace::Files() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(Work())) {
    if (!entry.is_regular_file()) continue;
    const std::string path = entry.path().string();
    files[path.substr(Work().size() + 1)] = path.ends_with(".mdb") ? "" : ReadFile(path);
  }
  return files;
}

bool IsUnfinished(const std::string& path) {
  return FileNameOf(path).starts_with(kUnfinished) || path.ends_with("-journal") || path.ends_with(".tmp");
}

std::string Workplace::Business(const std::string& dataFolder, bool withAddresses) {
  const std::string path = dataFolder + "/Tarvolinex.mdb";
  if (!FileExists(path)) return {};
  std::string text;
  try {
    Connection connection;
    connection.Open("dbq=" + path);
    Recordset sound;
    sound.Open("PRAGMA integrity_check", connection);
    if (ValueText(sound.Field(0)) != "ok") text += "damaged\n";
    // The time of a sending is another in every run.
    for (const char* rows :
         {connection.HasTable("KeptQuotes") ? "SELECT * FROM KeptQuotes ORDER BY ID" : "SELECT 1 WHERE 0",
          "SELECT * FROM suppliers ORDER BY ID", "SELECT * FROM DefaultSupplier", "SELECT * FROM Forms ORDER BY ID",
          "SELECT FormId, SupplierId FROM SupplierFormLink ORDER BY SupplierId, FormId",
          withAddresses ? "SELECT ID, email FROM contacts ORDER BY ID" : "SELECT ID FROM contacts",
          "SELECT Supplierid, firstname, surname, jobtitle, tel, fax, length(DateLastSent) > 0 FROM contacts ORDER BY "
          "ID"}) {
      Recordset records;
      for (records.Open(rows, connection); !records.EndOfFile(); records.MoveNext()) {
        for (int i = 0; i < records.ColumnCount(); ++i) text += ValueText(records.Field(i)) + "|";
        text += "\n";
      }
    }
  } catch (const RuntimeError& failure) {
    text = "damaged: " + failure.Description() + "\n";
  }
  return text;
}

}  // namespace tarvolinex
