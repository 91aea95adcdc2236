#include "core/Limits.h"

#include <cstdint>

#include "core/Aliases.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

struct LimitPair {
  std::string name, lowest, highest;
  bool contradicts;
};

LimitPair Whole(const std::string& name, std::int32_t lowest, std::int32_t highest) {
  return {name, std::to_string(lowest), std::to_string(highest), lowest > 0 && lowest > highest};
}

LimitPair Percent(const std::string& name, float lowest, float highest) {
  return {name, FormatSingle(lowest) + "%", FormatSingle(highest) + "%", lowest > 0 && lowest > highest};
}

}  // namespace

std::string ContradictoryLimits(const CalculatorPreferencesRecord& prefs, const Words& words) {
  const auto own = [&](const char* text) { return ReplaceAliases(text, words); };
  constexpr int kAdvancedPayments = 4;
  for (const LimitPair& pair :
       {Whole(Tr("Lease term in months"), prefs.MinTerm, prefs.MaxTerm),
        Whole(own("<CAPEQUIP> cost"), prefs.MinCapitalCost, prefs.MaxCapitalCost),
        Percent(own("<DEPOSIT> percentage"), prefs.MinDepositPercent, prefs.MaxDepositPercent),
        Percent(own("<RESIDUAL> percentage"), prefs.MinResidualPercent, prefs.MaxResidualPercent)}) {
    if (!pair.contradicts) continue;
    return Tr(
        "%1: the minimum of %2 is above the maximum of %3, so a calculator would have nothing to choose. Please "
        "change one of the two.",
        {Trim(pair.name), pair.lowest, pair.highest});
  }
  if ((prefs.DepositOptions & kAdvancedPayments) != 0 && prefs.MaxTerm > 0 &&
      prefs.MinAdvancedPayments >= prefs.MaxTerm) {
    return Tr(
        "Advanced payments: the minimum of %1 leaves nothing of the maximum term of %2 months, so a calculator "
        "would have nothing to choose. Please change one of the two.",
        {std::to_string(prefs.MinAdvancedPayments), std::to_string(prefs.MaxTerm)});
  }
  return {};
}

std::string ContradictoryLimits(const CalculatorPreferencesRecord& prefs) {
  const SupplierCalcSettingsRecord nobody;
  return ContradictoryLimits(prefs, {prefs, nobody});
}

void CheckLimits(const CalculatorPreferencesRecord& prefs) {
  const std::string why = ContradictoryLimits(prefs);
  if (!why.empty()) throw RuntimeError(kLimits, why);
}

}  // namespace tarvolinex
