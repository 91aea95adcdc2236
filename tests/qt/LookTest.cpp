#include "qt/Look.h"

#include <gtest/gtest.h>

#include <QtWidgets>

#include "qt/Dialogs.h"

namespace tarvolinex {

TEST(Captions, KeepTheirLastAccessKeyAndTheirText) {
  struct Case {
    const char *caption, *withKey, *without;
  };
  for (const auto& [caption, withKey, without] : {Case{"&File", "&File", "File"},
                                                  {"&Supplier &Details", "Supplier &Details", "Supplier Details"},
                                                  {"Brown & Sons", "Brown && Sons", "Brown & Sons"},
                                                  {"B&&Q &Ltd", "B&&Q &Ltd", "B&Q Ltd"},
                                                  {"End&", "End&&", "End&"},
                                                  {"", "", ""}}) {
    EXPECT_EQ(Held(WithAccessKey(caption)), withKey);
    EXPECT_EQ(Held(WithoutAccessKey(caption)), without);
  }
}

TEST(Choices, AreSeenOnADarkWindow) {
  OutlineChoices();
  const QColor dark(42, 46, 50);
  for (const bool tick : {true, false}) {
    const std::unique_ptr<QAbstractButton> button(tick ? static_cast<QAbstractButton*>(new QCheckBox)
                                                       : new QRadioButton);
    QPalette palette;
    palette.setColor(QPalette::Window, dark);
    palette.setColor(QPalette::Base, dark.darker());
    palette.setColor(QPalette::WindowText, Qt::white);
    button->setPalette(palette);
    const QImage drawn = button->grab().toImage();
    int lightest = 0;
    for (int y = 0; y < drawn.height(); ++y) {
      for (int x = 0; x < drawn.width(); ++x) lightest = std::max(lightest, qGray(drawn.pixel(x, y)));
    }
    EXPECT_GT(lightest, 128) << tick;
  }
}

TEST(Filters, AreThoseOfTheProgram) {
  EXPECT_EQ(NameFilters("Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*"),
            QStringList({"Pages (*.htm *.html)", "All files (*)"}));
  EXPECT_EQ(NameFilters("Icons (small)|*.ico"), QStringList({"Icons (small) (*.ico)"}));
  EXPECT_EQ(NameFilters(""), QStringList());
}

}  // namespace tarvolinex
