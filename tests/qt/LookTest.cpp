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

TEST(Filters, AreThoseOfTheProgram) {
  EXPECT_EQ(NameFilters("Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*"),
            QStringList({"Pages (*.htm *.html)", "All files (*)"}));
  EXPECT_EQ(NameFilters("Icons (small)|*.ico"), QStringList({"Icons (small) (*.ico)"}));
  EXPECT_EQ(NameFilters(""), QStringList());
}

}  // namespace
}  // namespace tarvolinex
