#include "qt/Look.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPalette>

#include "qt/Dialogs.h"

namespace tarvolinex {
namespace {

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

TEST(Colours, GoBothWaysAndFollowThePalette) {
  EXPECT_EQ(ToQColor(0x00FF8001), QColor(0x01, 0x80, 0xFF));
  EXPECT_EQ(FromQColor(QColor(0x01, 0x80, 0xFF)), 0x00FF8001U);
  EXPECT_EQ(ToQColor(kSystemWindow), QGuiApplication::palette().color(QPalette::Base));
}

TEST(Filters, AreThoseOfTheProgram) {
  EXPECT_EQ(NameFilters("Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*"),
            QStringList({"Pages (*.htm *.html)", "All files (*)"}));
  EXPECT_EQ(NameFilters("Icons (small)|*.ico"), QStringList({"Icons (small) (*.ico)"}));
  EXPECT_EQ(NameFilters(""), QStringList());
}

TEST(ToolTips, ShowMarkupLetterForLetter) {
  EXPECT_EQ(PlainToolTip("a < b"), "a < b");
  EXPECT_EQ(PlainToolTip("<b>x</b>"), "&lt;b&gt;x&lt;/b&gt;");
}

}  // namespace
}  // namespace tarvolinex
