#include "store/SharedFiles.h"

#include <algorithm>
#include <optional>
#include <set>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Row.h"
#include "store/Schema.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr const char* kFolders[] = {"Forms", "logo", "icons"};
constexpr const char* kListName = "\\Shared.lst";

using Prints = FilesByName;  // "Forms/12.html" and what is in it

std::string KeyOf(std::string_view folder, std::string_view name) {
  return std::string(folder) + "/" + std::string(name);
}

// Whether a name leads to a file of one of the folders: it becomes a path.
bool IsOfOurFolders(std::string_view key) {
  const auto stroke = key.find('/');
  if (stroke == std::string_view::npos) return false;
  const std::string_view folder = key.substr(0, stroke), name = key.substr(stroke + 1);
  return std::ranges::any_of(kFolders, [&](const char* ours) { return EqualNoCase(ours, folder); }) && !name.empty() &&
         name != "." && name != ".." && name.find_first_of("/\\") == std::string_view::npos;
}

// What one desk has, and had when it last agreed with the server.
class Desk {
 public:
  Desk(std::string dataFolder, const std::string& server) : folder_(std::move(dataFolder)), server_(server) {
    for (const char* sub : kFolders) {
      for (const std::string& name : ListFiles(folder_ + "\\" + sub + "\\*.*")) {
        const std::string path = folder_ + "\\" + sub + "\\" + name;
        paths_[KeyOf(sub, name)] = path;
        now_[KeyOf(sub, name)] = Fingerprint(ReadFile(path));
      }
    }
    ReadList();
  }
  const Prints& Now() const { return now_; }
  // nullopt: it has never agreed with this server.
  const std::optional<Prints>& Before() const { return before_; }

  std::string Content(const std::string& key) const { return ReadFile(paths_.at(key)); }
  void Put(const std::string& key, const std::string& content) {
    WriteFile(PathOf(key), content);
    now_[key] = Fingerprint(content);
  }
  void Remove(const std::string& key) {
    DeleteFile(paths_.at(key));
    now_.erase(key);
  }
  void SetAside(const std::string& key) {
    const std::string target = SetAsideFolder(folder_) + "\\" + ReplaceAll(key, "/", "\\");
    for (const std::string& each : {SetAsideFolder(folder_), FolderOf(target)}) {
      if (!FolderExists(each)) MakeFolder(each);
    }
    CopyFile(paths_.at(key), target);
    Remove(key);
  }
  // It agrees with the server in these.
  void Remember(const Prints& agreed) const {
    std::string text = server_ + "\n";
    for (const auto& [key, print] : agreed) text += print + " " + key + "\n";
    if (!FileExists(folder_ + kListName) || ReadFile(folder_ + kListName) != text) WriteFile(folder_ + kListName, text);
  }

 private:
  void ReadList() {
    if (!FileExists(folder_ + kListName)) return;
    const std::string text = ReadFile(folder_ + kListName);
    const auto lines = Split(text, '\n');
    if (lines.front() != server_) return;
    before_.emplace();
    for (const std::string_view line : lines) {
      const auto blank = line.find(' ');
      if (&line != &lines.front() && blank != std::string_view::npos)
        before_->emplace(line.substr(blank + 1), line.substr(0, blank));
    }
  }
  static std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('\\')); }
  std::string PathOf(const std::string& key) {
    std::string& path = paths_[key];
    if (path.empty()) path = folder_ + "\\" + ReplaceAll(key, "/", "\\");
    if (!FolderExists(FolderOf(path))) MakeFolder(FolderOf(path));
    return path;
  }
  const std::string folder_, server_;
  FilesByName paths_;
  Prints now_;
  std::optional<Prints> before_;
};

// The table of the files.
class OfficeFiles {
 public:
  explicit OfficeFiles(Connection& connection) : connection_(connection) {}
  Prints Now() {
    Prints prints;
    if (!connection_.HasTable(kOfficeFilesTable)) return prints;
    Recordset rows;
    rows.Open(statements::kOfficeFiles, connection_, Recordset::Rows::Later);
    rows.ReadRows({"ID", "Name", "Print"}, [&](const std::vector<std::string_view>& row) {
      if (!IsOfOurFolders(row[1])) return;
      prints.emplace(row[1], row[2]);
      ids_[std::string(row[1])] = row[0];
    });
    return prints;
  }
  std::string Content(const std::string& key) {
    Recordset row;
    row.Open(FillStatement(statements::kOfficeFile, "<ID>", ids_.at(key)), connection_);
    return row.EndOfFile() ? std::string() : FromBase64(ValueText(row.Field("Content")));
  }
  void Put(const std::string& key, const std::string& content) {
    Remove(key);
    connection_.Execute(FillStatement(
        statements::kInsertOfficeFile,
        {{"<NAME>", DoubleQuotes(key)}, {"<PRINT>", Fingerprint(content)}, {"<CONTENT>", Base64(content)}}));
  }
  void Remove(const std::string& key) {
    const auto id = ids_.find(key);
    if (id == ids_.end()) return;
    connection_.Execute(FillStatement(statements::kDeleteOfficeFile, "<ID>", id->second));
    ids_.erase(id);
  }

 private:
  Connection& connection_;
  FilesByName ids_;
};

const std::string& In(const Prints& prints, const std::string& key) {
  static const std::string none;
  const auto found = prints.find(key);
  return found == prints.end() ? none : found->second;
}

// One meeting of a desk with the server, in the transaction that is open when something may be stored.
class Meeting {
 public:
  Meeting(Connection& connection, Desk& desk) : office_(connection), desk_(desk), there_(office_.Now()) {}

  // Whether this desk has something that the server has not.
  bool HasNews() const {
    if (!desk_.Before()) return there_.empty() && !desk_.Now().empty();
    return std::ranges::any_of(Keys(), [&](const std::string& key) { return Mine(key) && !Theirs(key); });
  }

  FileNews Meet(bool mayStore) {
    FileNews news;
    const bool first = !desk_.Before().has_value();
    agreed_ = desk_.Before().value_or(Prints());
    const auto settle = [&](const std::string& key) {
      const std::string& print = In(desk_.Now(), key);
      agreed_[key] = print;
      if (print.empty()) agreed_.erase(key);
    };
    for (const std::string& key : Keys()) {
      if (In(desk_.Now(), key) == In(there_, key)) {
        settle(key);
      } else if (first ? !there_.empty() : Theirs(key)) {
        if (!In(desk_.Now(), key).empty() && (first || Mine(key))) SetAside(key, news);
        Fetch(key, news);
        settle(key);
      } else if (mayStore) {
        Store(key, news);
        settle(key);
      }
    }
    return news;
  }

  // What they agree in since Meet. Only once it is stored there: what this desk has alone must not pass for an old
  // copy.
  void Remember() const { desk_.Remember(agreed_); }

 private:
  std::set<std::string> Keys() const {
    std::set<std::string> keys;
    const Prints before = desk_.Before().value_or(Prints());
    for (const Prints* prints : {&desk_.Now(), &there_, &before}) {
      for (const auto& [key, print] : *prints) keys.insert(key);
    }
    return keys;
  }
  bool Mine(const std::string& key) const { return In(desk_.Now(), key) != In(*desk_.Before(), key); }
  bool Theirs(const std::string& key) const { return In(there_, key) != In(*desk_.Before(), key); }
  void SetAside(const std::string& key, FileNews& news) {
    desk_.SetAside(key);
    news.setAside.push_back(key);
  }
  void Fetch(const std::string& key, FileNews& news) {
    if (!In(there_, key).empty()) {
      desk_.Put(key, office_.Content(key));
    } else if (!In(desk_.Now(), key).empty()) {
      desk_.Remove(key);
    }
    news.fetched.push_back(key);
  }
  void Store(const std::string& key, FileNews& news) {
    if (In(desk_.Now(), key).empty()) {
      office_.Remove(key);
    } else {
      office_.Put(key, desk_.Content(key));
    }
    news.stored.push_back(key);
  }
  OfficeFiles office_;
  Desk& desk_;
  Prints there_, agreed_;
};

}  // namespace

FileNews BringFilesTogether(Database& database) {
  Connection& connection = database.Plain();
  if (!connection.IsOpen() || connection.IsFile()) return {};
  Desk desk(database.Folder(), database.Name());
  if (Meeting look(connection, desk); database.ReadOnly() || !look.HasNews()) {
    const FileNews news = look.Meet(false);
    look.Remember();
    return news;
  }
  connection.Begin();
  try {
    connection.Flush();  // nobody else stores anything from here on: what is read now stays so
    Meeting meeting(connection, desk);
    const FileNews news = meeting.Meet(true);
    connection.Commit();
    meeting.Remember();
    return news;
  } catch (const RuntimeError&) {
    connection.Rollback();
    throw;
  }
}

bool ShareFiles(Database& database, Reporter& reporter) {
  try {
    const FileNews news = BringFilesTogether(database);
    if (!news.setAside.empty()) {
      std::string names;
      for (const std::string& name : news.setAside) names += "\n" + name;
      reporter.MessageBox(Tr("These pages and pictures were another's on the shared database. Those are used now; your "
                             "own lie in %1:\n%2",
                             {NativePath(SetAsideFolder(database.Folder())), names}),
                          Tr("Shared Database"), BoxButtons::Ok, BoxIcon::Information);
    }
    return !news.fetched.empty();
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("The pages and pictures could not be brought together with the shared database"),
                  failure.Description());
    return false;
  }
}

FilesByName OfficeFilesOf(Connection& connection, const std::string& folder) {
  FilesByName files;
  if (connection.IsFile()) {
    const Desk desk(folder, "");
    for (const auto& [key, print] : desk.Now()) files[key] = desk.Content(key);
  } else {
    OfficeFiles office(connection);
    for (const auto& [key, print] : office.Now()) files[key] = office.Content(key);
  }
  return files;
}

void StoreOfficeFiles(const FilesByName& files, Connection& connection) {
  OfficeFiles office(connection);
  office.Now();
  for (const auto& [key, content] : files) office.Put(key, content);
}

void LayOut(const FilesByName& files, const std::string& folder) {
  Desk desk(folder, "");
  for (const auto& [key, content] : files) {
    const std::string& there = In(desk.Now(), key);
    if (there.empty() || there == Fingerprint(content)) continue;
    throw RuntimeError(kFileAlreadyOpen,
                       Tr("There is another file %1 in %2 already; nothing was copied", {key, folder}));
  }
  for (const auto& [key, content] : files) {
    if (In(desk.Now(), key).empty()) desk.Put(key, content);
  }
}

std::string SetAsideFolder(const std::string& dataFolder) {
  return dataFolder + "\\Set Aside";
}

}  // namespace tarvolinex
