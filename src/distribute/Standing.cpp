#include "distribute/Standing.h"

#include "distribute/Progress.h"
#include "platform/RuntimeError.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Ingredients.h"
#include "store/Forms.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

// The forms of every supplier.
class AllLinks {
 public:
  explicit AllLinks(Database& database) : links_(FormLinksOfAll(database)) {
    for (FormRow& form : AllForms(database)) forms_.emplace(form.id, std::move(form));
  }
  std::vector<FormRow> Of(int supplier) const {
    std::vector<FormRow> linked;
    const auto found = links_.find(supplier);
    if (found == links_.end()) return linked;
    for (const int form : found->second) {
      if (const auto row = forms_.find(form); row != forms_.end()) linked.push_back(row->second);
    }
    return linked;
  }

 private:
  std::map<int, std::vector<int>> links_;
  std::map<int, FormRow> forms_;
};

}  // namespace

const char* NameOf(Currentness state) {
  constexpr const char* kNames[] = {"never", "current", "stale"};
  return kNames[static_cast<std::size_t>(state)];
}

void ForEachStanding(Database& database, const Branding& branding, const std::function<void(const Standing&)>& read) {
  const std::map<int, LastSent> sent = LastSentOf(database);
  const std::string organisation = OrganisationIngredients(branding);
  const AllLinks links(database);
  FormPrints prints(branding.folders.data);
  ForEachSupplier(database, [&](const Recordset& record) {
    Standing standing;
    standing.supplierId = static_cast<int>(ValueNumber(record.Field("ID")));
    standing.companyName = Trim(ValueText(record.Field("CompanyName")));
    if (const auto last = sent.find(standing.supplierId); last != sent.end()) {
      standing.lastSent = last->second.date;
      standing.sentAs = last->second.sentAs;
      try {
        const std::string now =
            SupplierIngredients(ReadSupplierSettings(Row(record)), links.Of(standing.supplierId), prints);
        standing.changes =
            ChangesBetween(last->second.organisationIngredients + last->second.supplierIngredients, organisation + now);
      } catch (const RuntimeError& fault) {
        standing.changes = fault.Description();
      }
      standing.state = standing.changes.empty() ? Currentness::Current : Currentness::Stale;
    }
    read(standing);
  });
}

std::string DeliveryDate(std::chrono::system_clock::time_point when) {
  const std::string words = LongDateTime(when);
  constexpr std::size_t kTime = 8;
  return IsoDate(when) + " " + words.substr(words.size() - kTime);
}

void NoteDelivery(Database& database, const Publication& publication, const std::vector<Delivery>& deliveries,
                  Reporter& reporter) {
  try {
    FormPrints prints(publication.branding.folders.data);
    NoteDeliveries(database, deliveries, OrganisationIngredients(publication.branding),
                   SupplierIngredients(publication.supplier, publication.forms, prints));
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("What has gone out could not be noted in the database"), failure.Description());
  }
}

void NoteMade(Database& database, int supplierId, const Publication& publication, const std::string& sentAs,
              Reporter& reporter) {
  Delivery made;
  made.date = DeliveryDate(reporter.Now());
  made.supplierId = supplierId;
  made.companyName = publication.supplier.CompanyName.Trimmed();
  made.sentAs = sentAs;
  made.result = "made";
  NoteDelivery(database, publication, {made}, reporter);
}

}  // namespace tarvolinex
