#include <iostream>

#include "calc/Payment.h"
#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/LivePage.h"

namespace tarvolinex {

int RunLive(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier"}, {}, 1);
  const std::string id = SupplierIdOf(parsed);
  if (parsed.Words().empty()) throw UsageError{"PAGE.html is needed"};
  const std::string& page = parsed.Words().front();
  if (!EndsWithNoCase(page, ".html")) throw UsageError{page + " does not end in \".html\""};
  if (!FileExists(page)) throw RuntimeError(kFileNotFound, page + " does not exist");
  Database database(run);
  const SupplierRow supplier = ChooseSupplier(run, database, id);
  QuoteRecord quote;
  quote.NumberOfPayments = 12;  // as the window starts
  CalculateQuote(kModeForward, quote, {supplier.settings, run.CalculatorPreferences.TaxRate, false});
  const Enquiry enquiry = {run.CalculatorPreferences, supplier.settings, quote, run.AppFolder};
  std::cout << NativePath(CreateLivePage(page, run.DataFolder + "\\logo", enquiry, run)) << '\n';
  return kDone;
}

}  // namespace tarvolinex
