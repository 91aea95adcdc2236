// A calculator goes out through the real window.
#include <random>

#include "Player.h"
#include "publish/Preferences.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

// Counts how often a widget is painted.
class PaintCounter : public QObject {
 public:
  int count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

TEST_F(SampleWindow, AnUploadLetsTheWindowLiveAndEscapeStopsIt) {
  CalculatorPreferences.AliasCalcName = "Lease Tool";
  SaveCalculatorPreferences(OwnBranding(), run);
  ClickTab(kTabSend);
  Type("TxtEmail_0", "Your calculator");
  Keys(Find<QPlainTextEdit>("TxtEmail_1"), "Hello");
  Click(Find<QPushButton>("CmdCalcGo_3"));
  const LoopbackServer server("http", folder.Path(), {"slow", "SUCCESS"});
  WebServer = server.Host();
  std::string noise(8 << 20, '\0');
  std::minstd_rand random(1);
  for (char& c : noise) c = static_cast<char>(random() >> 8);
  folder.File("calculator/noise.bin", noise);
  QProgressBar& bar = Find<QProgressBar>("ProgressBar1");
  PaintCounter painted;
  bar.installEventFilter(&painted);
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &bar, [&] {
    const bool sending = Find("TxtStatus").text().startsWith("Transfering") && bar.value() > 4;
    if (sending && !run.StopRequested) Press(Root(), Qt::Key_Escape);
  });
  watch.start(20);
  Send(2);
  auto& go = Find<QPushButton>("CmdCalcGo_0");
  ASSERT_EQ(said.size(), 1U);
  EXPECT_TRUE(said[0].starts_with("File Upload failed\n\nhttp://")) << said[0];
  EXPECT_EQ(Root().focusWidget(), &go);
  EXPECT_GT(painted.count, 3);
  EXPECT_TRUE(go.isEnabled());
  EXPECT_FALSE(FileExists(folder.Path() + "/body"));
  EXPECT_TRUE(ListFiles(AppFolder + "\\CalcInstall_*").empty());
}

}  // namespace tarvolinex
