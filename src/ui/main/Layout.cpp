// Where the parts of the main window lie, in twips (1/15 of a pixel at 100 %).
#include <algorithm>

#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

constexpr int kTabWidth = 10200;
constexpr int kGap = 50;         // between the list and the tab set
constexpr int kRightEdge = 150;  // clear of the window's right edge
constexpr int kToolbarHeight = 780;
constexpr int kCompanyTop = 800, kCompanyHeight = 450, kChangedWidth = 2700;
constexpr int kFilterLabel = 750, kFilterTop = 860, kFilterHeight = 375, kSmallestFilter = 1500, kFilter = 4500,
              kChoice = 2100;
constexpr int kTop = 1300;         // of the list and the tab set
constexpr int kAroundTabs = 1850;  // what the window's height has beyond the tab set's
constexpr int kStatusHeight = 375, kProgressWidth = 2400;
constexpr int kRoomForBands = 10800;  // the tab set is this high before the quote tab shows the rate card
constexpr int kKeptHeight = 600;      // two lines and the gap below them

}  // namespace

void QuotePanel::SetRoom(int height) {
  room_ = height;
  FitBands();
}

void QuotePanel::FitBands() {
  FraBands.SetVisible(room_ >= kRoomForBands + (LblKept.Visible() ? kKeptHeight : 0));
}

int FrmMain::SmallestWidth() {
  return kTabWidth + kGap + kRightEdge;
}

int FrmMain::SmallestHeight() {
  return 8700;
}

void FrmMain::Arrange(int width, int height) {
  width = std::max(width, SmallestWidth());
  height = std::max(height, SmallestHeight());
  StartWidth = width;
  StartHeight = height;
  const int tabLeft = width - kRightEdge - kTabWidth;
  const int tabHeight = height - kAroundTabs;
  const int statusTop = height - kStatusHeight - kGap;
  Toolbar1.SetPosition({0, 0, width, kToolbarHeight});
  LblCompany.SetPosition({tabLeft, kCompanyTop, kTabWidth - kChangedWidth, kCompanyHeight});
  LblChanged.SetPosition({tabLeft + kTabWidth - kChangedWidth, kCompanyTop, kChangedWidth, kCompanyHeight});
  const int listWidth = width - kTabWidth - kGap - kRightEdge;
  TabMain.SetPosition({tabLeft, kTop, kTabWidth, tabHeight});
  LvwSuppliers.SetPosition({0, kTop, listWidth, tabHeight});
  const bool roomForFilter = listWidth >= kSmallestFilter;
  LblFilter.SetVisible(roomForFilter);
  TxtFilter.SetVisible(roomForFilter);
  standing.CboStanding.SetVisible(roomForFilter);
  LblFilter.SetPosition({kRightEdge, kFilterTop, kFilterLabel, kFilterHeight});
  const int filters = listWidth - kFilterLabel - kRightEdge - kGap;
  const int choice = std::min(filters / 2, kChoice), filter = std::min(filters - choice, kFilter);
  TxtFilter.SetPosition({kRightEdge + kFilterLabel, kFilterTop, filter, kFilterHeight});
  standing.CboStanding.SetPosition({kRightEdge + kFilterLabel + filter + kGap, kFilterTop, choice, kFilterHeight});
  quote.SetRoom(tabHeight);
  // The status text has half of the line, the database in use and the progress bar the other.
  const int half = (width - 3 * kRightEdge) / 2, right = width - kRightEdge;
  TxtStatus.SetPosition({kRightEdge, statusTop, half, kStatusHeight});
  LblDatabase.SetPosition({right - half, statusTop, half - kProgressWidth - kGap, kStatusHeight});
  ProgressBar1.SetPosition({right - kProgressWidth, statusTop, kProgressWidth, kStatusHeight});
}

}  // namespace tarvolinex
