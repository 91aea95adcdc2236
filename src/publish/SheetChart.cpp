#include "publish/SheetChart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "publish/SheetValues.h"

namespace tarvolinex {

namespace {

constexpr double kWidth = 640, kHeight = 160;
constexpr double kLeft = 78, kTop = 10, kBottom = 26, kNames = 30, kRight = 12;
constexpr double kLetters = 10.5;
constexpr std::uint32_t kGrid = 0xDADDE2, kInk = 0x5B6470;

// Told apart in grey too: they differ in lightness, and each line bears its name.
constexpr std::array<std::uint32_t, 5> kOthers = {0xB4541A, 0x3D7D5C, 0x7A5AA6, 0x9A8424, 0x4A8FB8};

struct Point {
  double months, paid;
};

std::vector<Point> StepsOf(const ChartLine& line) {
  std::vector<Point> steps = {{0, 0}};
  double paid = 0;
  for (const ScheduleLine& each : line.schedule.lines) {
    paid += each.amountIncTax.ToDouble();
    const double months = each.number * line.monthsAPayment;
    if (steps.back().months == months) {
      steps.back().paid = paid;
    } else {
      steps.push_back({months, paid});
    }
  }
  return steps;
}

// 1, 2, 2.5 or 5 times a power of ten, so that at most so many fill the whole.
double StepOf(double whole, double most) {
  const double power = std::pow(10, std::floor(std::log10(std::max(whole / most, 0.01))));
  for (const double step : {1.0, 2.0, 2.5, 5.0}) {
    if (whole / (step * power) <= most) return step * power;
  }
  return 10 * power;
}

class Chart {
 public:
  Chart(const std::vector<ChartLine>& lines, std::uint32_t colour) : lines_(lines), colour_(colour) {
    for (const ChartLine& line : lines) {
      steps_.push_back(StepsOf(line));
      months_ = std::max(months_, steps_.back().back().months);
      paid_ = std::max(paid_, steps_.back().back().paid);
    }
    drawing_.width = kWidth;
    drawing_.height = kHeight;
    right_ = kWidth - (lines.size() > 1 ? kNames : kRight);
  }

  void AddScale(const std::function<std::string(double)>& amountText) {
    constexpr double kMostAmounts = 5;
    const double step = StepOf(paid_, kMostAmounts);
    top_ = std::ceil(paid_ / step) * step;
    for (double amount = 0; amount <= top_ + step / 2; amount += step) {
      const double y = Y(amount);
      drawing_.lines.push_back({kLeft, y, right_, y, amount == 0 ? 1.0 : 0.6, amount == 0 ? kInk : kGrid});
      AddLabel(kLeft - 6, y + kLetters * 0.35, Drawing::Anchor::End, kInk, amountText(amount));
    }
    const double every = months_ <= 24 ? 6 : months_ <= 84 ? 12 : 12 * std::ceil(months_ / 84);
    for (double month = 0; month <= months_; month += every) {
      drawing_.lines.push_back({X(month), Y(0), X(month), Y(0) + 4, 0.8, kInk});
      AddLabel(X(month), Y(0) + kLetters + 7, Drawing::Anchor::Middle, kInk, std::to_string(static_cast<int>(month)));
    }
  }

  void AddLines() {
    for (std::size_t i = 0; i < steps_.size(); ++i) {
      const std::uint32_t colour = ColourOf(i);
      const std::vector<Point>& steps = steps_[i];
      for (std::size_t k = 0; k + 1 < steps.size(); ++k) AddStep(steps[k], steps[k + 1], colour);
      drawing_.lines.push_back({X(0), Y(0), X(0), Y(steps.front().paid), kThick, colour});
    }
    if (lines_.size() > 1) AddNames();
  }

  Drawing Drawn() { return std::move(drawing_); }

 private:
  static constexpr double kThick = 1.8;
  double X(double months) const { return kLeft + (right_ - kLeft) * months / std::max(months_, 1.0); }
  double Y(double paid) const { return kHeight - kBottom - (kHeight - kBottom - kTop) * paid / std::max(top_, 1.0); }

  void AddLabel(double x, double baseline, Drawing::Anchor anchor, std::uint32_t colour, std::string text) {
    drawing_.labels.push_back({x, baseline, kLetters, anchor, colour, std::move(text), false});
  }

  // Several lie over each other: steps would hide what is below.
  void AddStep(const Point& from, const Point& to, std::uint32_t colour) {
    if (lines_.size() > 1) {
      return drawing_.lines.push_back({X(from.months), Y(from.paid), X(to.months), Y(to.paid), kThick, colour});
    }
    const double half = kThick / 2;
    drawing_.boxes.push_back(
        {X(from.months), Y(from.paid), X(to.months) - X(from.months), Y(0) - Y(from.paid), TintOf(colour)});
    drawing_.lines.push_back({X(from.months) - half, Y(from.paid), X(to.months) + half, Y(from.paid), kThick, colour});
    drawing_.lines.push_back({X(to.months), Y(from.paid), X(to.months), Y(to.paid), kThick, colour});
  }

  // Each behind its line's end; those that end together stand one below the other.
  void AddNames() {
    std::map<double, std::vector<std::size_t>> ending;  // by month
    for (std::size_t i = 0; i < steps_.size(); ++i) ending[steps_[i].back().months].push_back(i);
    for (auto& [months, lines] : ending) {
      std::stable_sort(lines.begin(), lines.end(),
                       [&](std::size_t a, std::size_t b) { return steps_[a].back().paid > steps_[b].back().paid; });
      double next = 0;
      for (const std::size_t line : lines) {
        const double y = std::max(next, Y(steps_[line].back().paid));
        next = y + kLetters + 1;
        drawing_.labels.push_back({X(months) + 4, y + kLetters * 0.35, kLetters, Drawing::Anchor::Start, ColourOf(line),
                                   lines_[line].name, true});
      }
    }
  }

  std::uint32_t ColourOf(std::size_t line) const { return line == 0 ? colour_ : kOthers[(line - 1) % kOthers.size()]; }

  const std::vector<ChartLine>& lines_;
  const std::uint32_t colour_;
  std::vector<std::vector<Point>> steps_;
  double months_ = 0, paid_ = 0, top_ = 0, right_ = 0;
  Drawing drawing_;
};

}  // namespace

Drawing ChartOfPayments(const std::vector<ChartLine>& lines, std::uint32_t colour,
                        const std::function<std::string(double)>& amountText) {
  Chart chart(lines, colour);
  chart.AddScale(amountText);
  chart.AddLines();
  return chart.Drawn();
}

}  // namespace tarvolinex
