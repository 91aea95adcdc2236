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

bool IsUnfinished(const std::string& name) {
  return name.starts_with(kUnfinished) || name.ends_with("-journal") || name.ends_with(".tmp");
}

std::map<std::string, std::string> Workplace::Files() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(Work())) {
    const std::string name = entry.path().filename().string();
    if (!entry.is_regular_file() || IsUnfinished(name)) continue;
    files[entry.path().string().substr(Work().size() + 1)] =
        name.ends_with(".mdb") ? "" : ReadFile(entry.path().string());
  }
  return files;
}

std::vector<std::string> Workplace::Unfinished() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(Work())) {
    const std::string path = entry.path().string();
    if (!IsUnfinished(entry.path().filename().string())) continue;
    // A journal without its mark holds nothing to undo; it goes with the next change of its database.
    const bool idle = path.ends_with(".mdb-journal") && !ReadFile(path).starts_with('\xD9');
    if (!idle) names.push_back(path);
  }
  return names;
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
         {"SELECT * FROM suppliers ORDER BY ID", "SELECT * FROM DefaultSupplier", "SELECT * FROM Forms ORDER BY ID",
          "SELECT FormId, SupplierId FROM SupplierFormLink ORDER BY SupplierId, FormId",
          "SELECT ID, Supplierid, firstname, surname, jobtitle, tel, fax, email, length(DateLastSent) > 0 FROM "
          "contacts "
          "ORDER BY ID"}) {
      Recordset records;
      for (records.Open(rows, connection); !records.EndOfFile(); records.MoveNext()) {
        for (int column = 0; column < records.ColumnCount(); ++column) {
          const bool address = records.ColumnName(column) == "email";
          text += (address && !withAddresses ? "" : ValueText(records.Field(column))) + "|";
        }
        text += "\n";
      }
    }
  } catch (const RuntimeError& failure) {
    text = "damaged: " + failure.Description() + "\n";
  }
  return text;
}

}  // namespace tarvolinex
