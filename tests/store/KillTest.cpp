// The program is killed while it saves, adds, removes, publishes and packs; what it leaves is whole.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "distribute/InstallPackage.h"
#include "platform/MailProfiles.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/ZipComponent.h"
#include "publish/CalculatorFolder.h"
#include "publish/LivePage.h"
#include "publish/Preferences.h"
#include "store/FormPages.h"
#include "store/Forms.h"
#include "support/Fixture.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/iconedit/IconFile.h"

namespace tarvolinex {

constexpr int kKills = 200;
// A machine with much to do gets more time before the next kill when nothing had been written: microseconds.
constexpr int kLonger = 500;

// Three fields and the ticks of one supplier, all telling the same step.
void SaveStep(FrmMain& form, int step) {
  const std::string mark = "S" + std::to_string(step);
  for (const int field : {1, 3, 4}) {
    form.supplier.TxtSupplier(field).SetFocus();
    form.supplier.TxtSupplier(field).Type(mark);
  }
  ListView& forms = form.rateCard.LvwForms;
  for (int row = 0; row < forms.Count(); ++row) {
    if (forms.At(row).checked != (step % 2 == 0 || row == 0)) forms.ToggleCheck(row);
  }
  form.Toolbar1.Press("SAVE");
}

void WorkOnSuppliers(FrmMain& form, ScriptedDesktop& desktop, int firstStep) {
  for (int step = firstStep;; ++step) {
    form.LvwSuppliers.ClickRow(step % form.LvwSuppliers.Count());
    if (step % 5 == 3) {
      form.Toolbar1.Press("SAVE");
      form.menus.MnuAdd.Choose();
      form.supplier.TxtSupplier(kSupplierName).SetFocus();
      form.supplier.TxtSupplier(kSupplierName).Type("New " + std::to_string(step));
    }
    if (step % 5 == 4) {
      desktop.answers = {Answer::Yes};
      form.Toolbar1.Press("REMSUPP");
    } else {
      SaveStep(form, step);
    }
  }
}

// Every other job that writes files, a different one first each time; each file tells the step in two places.
void WorkOnFiles(FrmMain& form, ScriptedDesktop& desktop, int firstStep) {
  LoadCalculatorPreferences();
  FrmIconEdit editor;
  const std::string page = AppFolder + "\\form.html";
  for (int step = firstStep;; ++step) {
    const std::string mark = "S" + std::to_string(step);
    const std::function<void()> jobs[] = {
        [&] {
          CalculatorPreferences.AliasCalcName = CalculatorPreferences.OrgContactName = mark;
          SaveCalculatorPreferences(CalculatorPreferences);
        },
        [&] {
          MailProfile profile;
          profile.name = "Office";
          profile.server = profile.folder = mark;
          SaveMailProfile(AppFolder + "\\Mail.INI", profile);
        },
        [&] {
          editor.SetLoadPic("");
          editor.Picture2(step % kPaletteSize).Click();
          editor.Toolbar1.Press("FILL");
          editor.SavePic("KILLED");
        },
        [&] {
          WriteFile(page, mark + std::string(20000, ' ') + mark);
          AddFormPage(mark, page);
          CreateLivePage(page, "");
        },
        [&] {
          if (!FileExists(AppFolder + "\\Calc_test.Html")) return;
          desktop.answers = {Answer::Yes};
          form.send.TxtCalcCreate.SetText(AppFolder + "\\out.exe");
          BuildCalculatorFolder();
          BuildDistFiles(true);
        },
    };
    jobs[step % static_cast<int>(std::size(jobs))]();
  }
}

// A page of WorkOnFiles: it ends as it begins.
bool IsWhole(const std::string& page) {
  const std::string text = ReplaceAll(page, "\r\n", "");
  return text.substr(0, text.find(' ')) == text.substr(text.rfind(' ') + 1);
}

class KillTest : public ::testing::Test {
 protected:
  KillTest() {
    ZipComponent zip;
    zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
    zip.UnzipToFolder = folder.Path();
    zip.Unzip();
  }
  using Work = void (*)(FrmMain&, ScriptedDesktop&, int firstStep);
  // In the child, until it is killed.
  [[noreturn]] void WorkUntilKilled(Work work, int started, int firstStep) {
    ResetGlobals();
    ScriptedDesktop desktop;
    UseDesktop(&desktop);
    AppFolder = DataFolder = folder.Path();
    try {
      FrmMain form;
      form.Load();
      if (write(started, "x", 1) == 1) work(form, desktop, firstStep);
    } catch (const ProgramEnded&) {
      std::fprintf(stderr, "%s\n", desktop.boxes.back().text.c_str());
    }
    _exit(2);
  }
  void RunAndKill(Work work, int firstStep, int microseconds) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    const pid_t child = fork();
    if (child == 0) WorkUntilKilled(work, pipes[1], firstStep);
    close(pipes[1]);
    char started = 0;
    ASSERT_EQ(read(pipes[0], &started, 1), 1) << "the program did not come up";
    close(pipes[0]);
    usleep(static_cast<useconds_t>(microseconds));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the program ended by itself";
  }
  std::string Ask(Connection& connection, const std::string& statement) {
    Recordset answer;
    answer.Open(statement, connection);
    return answer.EndOfFile() ? "" : ValueText(answer.Field(0));
  }
  TemporaryFolder folder;
};

TEST_F(KillTest, EverySupplierIsWhollyAsBeforeOrAsAfter) {
  std::mt19937 random(20261124);
  std::string lastMarks;
  int changed = 0, longest = 30000;  // microseconds
  for (int kill = 0; kill < kKills; ++kill) {
    RunAndKill(WorkOnSuppliers, kill * 1000, std::uniform_int_distribution<int>(0, longest)(random));
    Connection connection;
    connection.Open("dbq=" + folder.Path() + "/Tarvolinex.mdb");
    ASSERT_EQ(Ask(connection, "PRAGMA integrity_check"), "ok");
    ASSERT_EQ(Ask(connection,
                  "SELECT CompanyName FROM suppliers WHERE Town LIKE 'S%' AND Town GLOB 'S[0-9]*' AND "
                  "(Town<>County OR Town<>Address1)"),
              "");
    ASSERT_EQ(Ask(connection,
                  "SELECT CompanyName FROM suppliers s WHERE Town GLOB 'S[0-9]*' AND (SELECT COUNT(*) FROM "
                  "SupplierFormLink WHERE SupplierId=s.ID) <> CASE CAST(substr(Town,2) AS INTEGER) % 2 WHEN "
                  "0 THEN 4 ELSE 1 END"),
              "");
    ASSERT_EQ(Ask(connection, "SELECT COUNT(*) FROM contacts WHERE Supplierid NOT IN (SELECT ID FROM suppliers)"), "0");
    const std::string marks = Ask(connection, "SELECT group_concat(Town) FROM suppliers");
    changed += marks != lastMarks;
    longest += marks == lastMarks ? kLonger : 0;
    lastMarks = marks;
  }
  // The kills must have come while there was something to lose.
  EXPECT_GT(changed, kKills / 4);
}

class FilesKillTest : public KillTest {
 protected:
  std::string Path(const std::string& name) { return folder.Path() + "/" + name; }
  // Each gives what shows the step to which its files belong.
  std::string Preferences() {
    CalculatorPreferencesRecord record;
    ReadRecord(Path("General.dat"), record);
    EXPECT_EQ(record.AliasCalcName.Trimmed(), record.OrgContactName.Trimmed());
    std::string mistake;
    const MailProfile mail = LoadMailProfile(Path("Mail.INI"), "Office", &mistake);
    EXPECT_EQ(mail.server, mail.folder);
    return record.AliasCalcName.Trimmed() + mail.server;
  }
  std::string Icon() {
    if (!FileExists(Path("icons/KILLED.ICO"))) return {};
    const IconImage image = LoadIcon(Path("icons/KILLED.ICO"));
    EXPECT_EQ(std::count(image.Pixels().begin(), image.Pixels().end(), image.At(0, 0)), kIconSide * kIconSide);
    return std::to_string(image.At(0, 0));
  }
  std::string Pages() {
    for (const std::string& name : ListFiles(Path("*.html"))) {
      const std::string page = ReadFile(Path(name));
      // The calculator's pages end with its name.
      const bool whole = page.substr(page.rfind('\n', page.size() - 2) + 1).starts_with("name=S");
      EXPECT_TRUE(name == "CalcTemplate.html" || whole || IsWhole(page)) << name;
    }
    Connection connection;
    connection.Open("dbq=" + Path("Tarvolinex.mdb"));
    EXPECT_EQ(Ask(connection, "PRAGMA integrity_check"), "ok");
    Recordset forms;
    forms.Open("SELECT ID, Description FROM forms WHERE Description GLOB 'S[0-9]*' ORDER BY ID DESC LIMIT 3",
               connection);
    for (; !forms.EndOfFile(); forms.MoveNext()) {
      const std::string page = ReadFile(Path("Forms/" + ValueText(forms.Field(0)) + ".HTML"));
      EXPECT_TRUE(page.starts_with(ValueText(forms.Field(1)) + " ") && IsWhole(page));
    }
    return Ask(connection, "SELECT MAX(ID) FROM forms");
  }
  std::string Packed() {
    if (!FileExists(Path("out.exe"))) return {};
    ZipComponent zip;
    zip.ZipFileName = Path("out.exe");
    zip.UnzipToFolder = Path("unpacked");
    zip.Unzip();
    EXPECT_EQ(Unfinished("unpacked"), 0) << "a half file has been packed";
    const std::string packed = ReadFile(Path("unpacked/general.dat"));
    std::filesystem::remove_all(Path("unpacked"));
    return packed;
  }
  int Unfinished(const std::string& name) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(Path(name))) {
      count += entry.path().filename().string().starts_with(kUnfinished);
    }
    return count;
  }
};

TEST_F(FilesKillTest, EveryFileIsWhollyAsBeforeOrAsAfter) {
  DeliverInto(folder.Path());
  std::filesystem::remove(Path("Database.zip"));
  CalculatorPreferencesRecord record;
  record.AliasCalcName = record.OrgContactName = "S";
  WriteRecord(Path("General.dat"), record);
  // Of programs that were killed before: just now, and long ago.
  folder.File("calculator/.tarvolinex-1-0.tmp", "half");
  const std::string old = folder.File(".tarvolinex-1-0.tmp", "half");
  std::filesystem::last_write_time(old, std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
  std::mt19937 random(20261125);
  std::string last;
  int changed = 0, unfinished = 0, longest = 20000;
  for (int kill = 0; kill < kKills && !HasFailure(); ++kill) {
    RunAndKill(WorkOnFiles, kill * 1001, std::uniform_int_distribution<int>(0, longest)(random));
    unfinished += Unfinished("");
    const std::string now = Preferences() + "|" + Icon() + "|" + Pages() + "|" + Packed();
    changed += now != last;
    longest += now == last ? kLonger : 0;
    last = now;
  }
  // The kills must have come while there was something to lose, and some of them in the middle of a file.
  EXPECT_GT(changed, kKills / 4);
  EXPECT_GT(unfinished, 0);
  EXPECT_FALSE(FileExists(old));
}

}  // namespace tarvolinex
