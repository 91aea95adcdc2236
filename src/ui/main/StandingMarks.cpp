#include "ui/main/StandingMarks.h"

#include <array>
#include <chrono>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

constexpr std::array<Currentness, 3> kStates = {Currentness::Stale, Currentness::Never, Currentness::Current};

RowMark MarkOf(Currentness state) {
  switch (state) {
    case Currentness::Stale:
      return RowMark::Full;
    case Currentness::Never:
      return RowMark::Empty;
    case Currentness::Current:
      break;
  }
  return RowMark::Tick;
}

std::string TextOf(const Standing& standing) {
  switch (standing.state) {
    case Currentness::Never:
      return Tr("This calculator has not been sent yet");
    case Currentness::Current:
      return Tr("Sent on %1 as %2; nothing has changed since", {standing.lastSent, standing.sentAs});
    case Currentness::Stale:
      break;
  }
  return Tr("Sent on %1 as %2; changed since: %3", {standing.lastSent, standing.sentAs, standing.changes});
}

}  // namespace

StandingMarks::StandingMarks(Window& window, Database& database, ListView& list, const ShownSupplier& shown)
    : CboStanding(window, "CboStanding"),
      LblStanding(window, "LblStanding"),
      TmrStanding(window, "TmrStanding"),
      database_(database),
      list_(list),
      shown_(shown) {
  CboStanding.Add(Tr("all calculators"), -1);
  for (const Currentness state : kStates) {
    CboStanding.Add(std::string(SignOf(MarkOf(state))) + " " + WordsOf(state), static_cast<int>(state));
  }
  CboStanding.SetListIndex(0);
  CboStanding.SetToolTip(Tr("Show only suppliers whose calculator is so"));
  CboStanding.Click = [this] {
    if (Changed) Changed();
  };
  TmrStanding.Interval = 1;
  TmrStanding.Tick = [this] { Look(); };
}

void StandingMarks::LookAtAll() {
  due_.clear();
  for (auto row = list_.Rows().rbegin(); row != list_.Rows().rend(); ++row) {
    if (const int id = IdOfKey(row->key); id != 0) due_.push_back(id);
  }
  standings_.reset();
  TmrStanding.SetRunning(true);
}

void StandingMarks::GoOn() {
  if (one_ != 0 || !due_.empty()) TmrStanding.SetRunning(true);
}

void StandingMarks::Look() {
  if (!AtRest()) return TmrStanding.SetRunning(false);
  const GoesOnWithout server(database_);
  LookAtOne();
  LookAtSome();
  if (!due_.empty()) return;
  TmrStanding.SetRunning(false);
  standings_.reset();
  if (std::exchange(changed_, false) && Changed) Changed();
}

void StandingMarks::LookAtSome() {
  using std::chrono::steady_clock;
  constexpr auto kSlice = std::chrono::milliseconds(8);
  if (due_.empty()) return;
  try {
    if (!standings_) standings_.emplace(database_, BrandingNow());
    for (const auto begun = steady_clock::now(); !due_.empty() && steady_clock::now() - begun < kSlice;) {
      const int id = due_.back();
      due_.pop_back();
      Mark(standings_->Of(id));
    }
  } catch (const RuntimeError&) {
    // A file that cannot be read, or the connection: whoever works with it tells.
    due_.clear();
  }
}

void StandingMarks::LookAt(int supplierId) {
  LblStanding.SetCaption("");
  one_ = supplierId;
  TmrStanding.SetRunning(true);
}

void StandingMarks::LookAtOne() {
  if (one_ == 0) return;
  try {
    Mark(StandingOf(database_, BrandingNow(), std::exchange(one_, 0)));
  } catch (const RuntimeError&) {
    // As above.
  }
}

void StandingMarks::Mark(const Standing& standing) {
  const int row = list_.Find("ID" + std::to_string(standing.supplierId));
  if (row < 0) return;
  changed_ |= list_.At(row).mark != MarkOf(standing.state);
  list_.SetMark(row, MarkOf(standing.state));
  list_.SetCell(row, kStateCell, WordsOf(standing.state));
  if (standing.supplierId == shown_.CurrentSupplierId) LblStanding.SetCaption(CaptionOf(TextOf(standing)));
}

bool StandingMarks::Shows(const ListView::Row& row) const {
  const int wanted = CboStanding.ItemData();
  return wanted < 0 || row.mark == RowMark::None || row.mark == MarkOf(static_cast<Currentness>(wanted));
}

}  // namespace tarvolinex
