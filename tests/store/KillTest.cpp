// The program is killed while it saves, adds and removes; what it leaves is whole.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "platform/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

constexpr int kKills = 200;

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

// Runs in the child until it is killed.
[[noreturn]] void WorkUntilKilled(const std::string& folder, int started, int firstStep) {
  ResetGlobals();
  ScriptedDesktop desktop;
  UseDesktop(&desktop);
  AppFolder = DataFolder = folder;
  FrmMain form;
  form.Load();
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
    // From here on there is something to lose, however slow the machine is.
    if (step == firstStep && write(started, "x", 1) != 1) _exit(2);
  }
}

class KillTest : public ::testing::Test {
 protected:
  KillTest() {
    ZipComponent zip;
    zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
    zip.UnzipToFolder = folder.Path();
    zip.Unzip();
  }
  void RunAndKill(int firstStep, int microseconds) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    const pid_t child = fork();
    if (child == 0) WorkUntilKilled(folder.Path(), pipes[1], firstStep);
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
  int changed = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    RunAndKill(kill * 1000, std::uniform_int_distribution<int>(0, 30000)(random));
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
    lastMarks = marks;
  }
  // The kills must have come while there was something to lose.
  EXPECT_GT(changed, kKills / 4);
}

}  // namespace tarvolinex
