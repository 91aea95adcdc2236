#include "calc/Payment.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/RowPipeline.h"

namespace tarvolinex {

int RunQuote(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--general", "--output"}, {}, 1);
  const RowInput input = ReadRowInput(run, parsed);
  const auto output = TableOutput::To(parsed.Value("--output"), QuoteResultColumns());
  WorkOnRows(input, *output, [] {
    return [](const RowJob& job, std::string& out) {
      QuoteRecord quote = job.row.quote;
      CalculateQuote(job.row.mode, quote, job.terms);
      AppendQuoteResult(quote, out);
    };
  });
  output->Commit();
  return kDone;
}

}  // namespace tarvolinex
