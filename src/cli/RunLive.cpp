#include <iostream>

#include "calc/Payment.h"
#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/LivePage.h"

namespace tarvolinex {

int RunLive(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier"}, {}, 1);
  const std::string id = SupplierIdOf(parsed);
  if (parsed.Words().empty()) throw UsageError{"PAGE.html is needed"};
  const std::string& page = parsed.Words().front();
  if (!EndsWithNoCase(page, ".html")) throw UsageError{page + " does not end in \".html\""};
  if (!FileExists(page)) throw RuntimeError(kFileNotFound, page + " does not exist");
  ChooseSupplier(id);
  constexpr int kFirstTerm = 12;  // as the window starts
  Quote.NumberOfPayments = kFirstTerm;
  CalculateQuote(kModeForward, Quote, {SupplierCalcSettings, CalculatorPreferences.TaxRate, false});
  std::cout << NativePath(CreateLivePage(page, DataFolder + "\\logo")) << '\n';
  return kDone;
}

}  // namespace tarvolinex
