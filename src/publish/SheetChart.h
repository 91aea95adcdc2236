// What has been paid over the time of a lease, drawn.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calc/Schedule.h"
#include "platform/files/RichDocument.h"

namespace tarvolinex {

// One quote of the chart.
struct ChartLine {
  std::string name;  // stands at the end of its line when there are several
  Schedule schedule;
  int monthsAPayment = 1;
};

// The amounts with tax that have been paid up to each month, as steps; a single quote's is filled. Without a word of
// its own, because a sheet's words are the organisation's.
// colour: RRGGBB. amountText: writes an amount of the scale, in whole units.
Drawing ChartOfPayments(const std::vector<ChartLine>& lines, std::uint32_t colour,
                        const std::function<std::string(double)>& amountText);

}  // namespace tarvolinex
