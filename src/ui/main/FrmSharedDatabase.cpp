#include "ui/main/FrmSharedDatabase.h"

#include "controls/Desktop.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DatabaseCopy.h"
#include "store/DatabaseFile.h"
#include "store/Schema.h"
#include "store/SharedDatabase.h"

namespace tarvolinex {

namespace {

// The ways of connecting, as they are offered.
struct Security {
  const char* mode;
  const char* caption;
};
constexpr Security kSecurity[] = {{"verify-full", Marked("Encrypted, certificate proved")},
                                  {"prefer", Marked("This machine: encrypted if it can be")},
                                  {"disable", Marked("This machine: not encrypted")}};

constexpr const char* kFields[] = {Marked("&Server"), Marked("P&ort"),     Marked("&Database"),
                                   Marked("&User"),   Marked("&Password"), Marked("&Connection")};

CopyProgress ProgressOf(Run& run) {
  return [&run](int percent, const std::string& table) {
    run.SetStatus(false, Tr("Copying %1", {table}), percent);
    run.Repaint();
  };
}

// Why nothing can be opened, and what to do.
std::string InWords(const RuntimeError& failure, const std::string& connectionString) {
  const std::string& said = failure.Description();
  const auto says = [&](const char* part) { return said.find(part) != std::string::npos; };
  const std::string server = ValueIn(connectionString, "server"), port = ValueIn(connectionString, "port");
  if (failure.Number() == kDatabasePassword) return Tr("The password is missing or wrong.");
  if (says("could not translate host name")) return Tr("There is no server of the name %1.", {server});
  if (says("Connection refused") || says("timeout expired") || says("No such file or directory")) {
    return Tr("No database server answers at %1, port %2.", {server, port.empty() ? "5432" : port});
  }
  if (says("does not exist") && says("database \"")) {
    return Tr("The server has no database %1.", {ValueIn(connectionString, "database")});
  }
  if (says("does not support SSL")) return Tr("The server at %1 offers no encrypted connection.", {server});
  if (says("certificate")) return Tr("The certificate of the server could not be proved: %1", {said});
  if (says("permission denied")) return Tr("This user has no rights to the database: %1", {said});
  return said;
}

int SuppliersIn(Connection& connection) {
  Recordset count;
  count.Open("SELECT COUNT(*) FROM suppliers", connection);
  return static_cast<int>(ValueNumber(count.Field(0)));
}

}  // namespace

FrmSharedDatabase::FrmSharedDatabase(Run& run, OpenDatabase open)
    : Window("FrmSharedDatabase", Tr("Shared Database")),
      ChkShared(*this, "ChkShared", -1, Tr("&Work on a database on a server, which several desks share")),
      LblField(*this, "LblField", static_cast<int>(std::size(kFields))),
      TxtServer(*this, "TxtServer"),
      TxtPort(*this, "TxtPort"),
      TxtDatabase(*this, "TxtDatabase"),
      TxtUser(*this, "TxtUser"),
      TxtPassword(*this, "TxtPassword"),
      CboSecurity(*this, "CboSecurity"),
      CmdTest(*this, "CmdTest", -1, Tr("&Test")),
      CmdMove(*this, "CmdMove", -1, Tr("&Move this database to the server")),
      CmdHome(*this, "CmdHome", -1, Tr("Take a copy &home...")),
      LblSaid(*this, "LblSaid"),
      cmdaction(*this, "cmdaction", 2),
      run_(run),
      open_(std::move(open)) {
  for (std::size_t i = 0; i < std::size(kFields); ++i) LblField(static_cast<int>(i)).SetCaption(Tr(kFields[i]));
  for (const Security& each : kSecurity) CboSecurity.Add(Tr(each.caption));
  cmdaction(0).SetCaption(Tr("OK"));
  cmdaction(1).SetCaption(Tr("Cancel"));
  ShowStored();
  ChkShared.Click = [this] { EnableFields(); };
  CmdTest.Click = [this] { CmdTest_Click(); };
  CmdMove.Click = [this] { CmdMove_Click(); };
  CmdHome.Click = [this] { CmdHome_Click(); };
  cmdaction(0).Click = [this] { Accept(); };
  cmdaction(1).Click = [this] { Close(); };
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
}

void FrmSharedDatabase::ShowStored() {
  const std::string stored =
      run_.SharedDatabase.empty() ? RememberedSharedDatabase(run_.AppFolder).text : run_.SharedDatabase;
  ChkShared.SetValue(!run_.SharedDatabase.empty());
  TxtServer.SetText(ValueIn(stored, "server"));
  TxtPort.SetText(ValueIn(stored, "port"));
  TxtDatabase.SetText(ValueIn(stored, "database"));
  TxtUser.SetText(ValueIn(stored, "uid"));
  const std::string mode = ValueIn(stored, "sslmode");
  int chosen = 0;
  for (std::size_t i = 0; i < std::size(kSecurity); ++i) {
    if (mode == kSecurity[i].mode) chosen = static_cast<int>(i);
  }
  CboSecurity.SetListIndex(chosen);
  EnableFields();
}

void FrmSharedDatabase::EnableFields() {
  const bool shared = ChkShared.Value();
  for (Control* each :
       {static_cast<Control*>(&TxtServer), static_cast<Control*>(&TxtPort), static_cast<Control*>(&TxtDatabase),
        static_cast<Control*>(&TxtUser), static_cast<Control*>(&TxtPassword), static_cast<Control*>(&CboSecurity),
        static_cast<Control*>(&CmdTest)}) {
    each->SetEnabled(shared);
  }
  // From the file that is worked on now, and from the server that is.
  CmdMove.SetEnabled(shared && run_.SharedDatabase.empty());
  CmdHome.SetEnabled(!run_.SharedDatabase.empty());
}

std::string FrmSharedDatabase::Entered() const {
  const auto part = [](const char* key, const TextBox& box) {
    const std::string text(Trim(box.Text()));
    return text.empty() ? std::string() : KeyAndValue(key, text);
  };
  return KeyAndValue("driver", "PostgreSQL") + part("server", TxtServer) + part("port", TxtPort) +
         part("database", TxtDatabase) + part("uid", TxtUser) +
         KeyAndValue("sslmode", kSecurity[static_cast<std::size_t>(std::max(CboSecurity.ListIndex(), 0))].mode);
}

std::string FrmSharedDatabase::WithPassword() const {
  return TxtPassword.Text().empty() ? Entered() : Entered() + KeyAndValue("pwd", TxtPassword.Text());
}

bool FrmSharedDatabase::Try(const std::function<std::string()>& action) {
  const BusyWhile busy;
  bool done = true;
  std::string said;
  try {
    said = action();
  } catch (const RuntimeError& failure) {
    said = InWords(failure, Entered());
    done = false;
  }
  LblSaid.SetCaption(CaptionOf(said));
  run_.SetStatus(false, "", -1);
  return done;
}

void FrmSharedDatabase::CmdTest_Click() {
  Try([this] {
    Connection connection;
    OpenShared(WithPassword(), connection);
    RefuseNewer(connection, DatabaseName(Entered()));
    if (!connection.HasTable("suppliers")) {
      return Tr("The server answers. Its database is empty: move this one there, or let another desk do it.");
    }
    const std::string count = std::to_string(SuppliersIn(connection));
    return connection.MayWrite() ? Tr("The server answers. Its database holds %1 suppliers.", {count})
                                 : Tr("The server answers. Its database holds %1 suppliers, which this user may only "
                                      "read.",
                                      {count});
  });
}

void FrmSharedDatabase::CmdMove_Click() {
  Try([this] {
    CopyOffice("dbq=" + DatabasePath(run_.DataFolder), WithPassword(), ProgressOf(run_));
    return Tr("All of it is on the server now. Press OK to work on it there; the file stays as it was.");
  });
}

void FrmSharedDatabase::CmdHome_Click() {
  const std::string path =
      TheDesktop().SaveFile({Tr("Take a copy home"), HomeFolder(), "Tarvolinex.mdb", Tr("Database (*.mdb)|*.mdb")});
  if (Trim(path).empty()) return;
  Try([&] {
    CopyOffice(run_.SharedDatabase, "dbq=" + path, ProgressOf(run_));
    return Tr("All of it is in %1 now, its pages and pictures beside it.", {path});
  });
}

void FrmSharedDatabase::Accept() {
  const std::string entered = Entered();
  if (ChkShared.Value()) {
    const bool opens = Try([this, &entered] {
      Connection connection;
      OpenShared(WithPassword(), connection);
      if (!TxtPassword.Text().empty()) StorePassword(LoginOf(entered), TxtPassword.Text());
      if (connection.HasTable("suppliers")) return std::string();
      throw RuntimeError(kDatabase, Tr("The database on the server is empty. Move this one there first."));
    });
    if (!opens) return;
  }
  RememberSharedDatabase(run_.AppFolder, {ChkShared.Value(), entered});
  run_.SharedDatabase = ChkShared.Value() ? entered : "";
  run_.DataFolder = ChkShared.Value() ? DeskFolder(run_.AppFolder, entered) : RememberedDataFolder(run_);
  Close();
  open_();
}

}  // namespace tarvolinex
