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

// What the supplier's calculator would be made of today, against what was last sent.
void Compare(Standing& standing, const LastSent& last, const std::string& organisation, const Row& supplier,
             const std::vector<FormRow>& forms, FormPrints& prints) {
  standing.lastSent = last.date;
  standing.sentAs = last.sentAs;
  try {
    const std::string now = SupplierIngredients(ReadSupplierSettings(supplier), forms, prints);
    standing.changes = ChangesBetween(last.organisationIngredients + last.supplierIngredients, organisation + now);
  } catch (const RuntimeError& fault) {
    standing.changes = fault.Description();
  }
  standing.state = standing.changes.empty() ? Currentness::Current : Currentness::Stale;
}

}  // namespace

const char* NameOf(Currentness state) {
  constexpr const char* kNames[] = {"never", "current", "stale"};
  return kNames[static_cast<std::size_t>(state)];
}

std::string WordsOf(Currentness state) {
  constexpr const char* kWords[] = {Marked("never sent"), Marked("current"), Marked("out of date")};
  return Tr(kWords[static_cast<std::size_t>(state)]);
}

Standings::Standings(Database& database, const Branding& branding)
    : database_(database),
      sent_(LastSentOf(database)),
      organisation_(OrganisationIngredients(branding)),
      links_(FormLinksOfAll(database)),
      prints_(branding.folders.data) {
  for (FormRow& form : AllForms(database)) forms_.emplace(form.id, std::move(form));
}

std::vector<FormRow> Standings::FormsOf(int supplier) const {
  std::vector<FormRow> linked;
  const auto found = links_.find(supplier);
  if (found == links_.end()) return linked;
  for (const int form : found->second) {
    if (const auto row = forms_.find(form); row != forms_.end()) linked.push_back(row->second);
  }
  return linked;
}

Standing Standings::Of(int supplierId) {
  if (!sent_.contains(supplierId)) {
    Standing never;
    never.supplierId = supplierId;
    return never;
  }
  return Of(ReadSupplier(database_, supplierId).row);
}

Standing Standings::Of(const Row& supplier) {
  Standing standing;
  standing.supplierId = supplier.Number("ID");
  standing.companyName = supplier.Text("CompanyName");
  if (const auto last = sent_.find(standing.supplierId); last != sent_.end()) {
    Compare(standing, last->second, organisation_, supplier, FormsOf(standing.supplierId), prints_);
  }
  return standing;
}

void ForEachStanding(Database& database, const Branding& branding, const std::function<void(const Standing&)>& read) {
  Standings standings(database, branding);
  ForEachSupplier(database, [&](const Recordset& record) { read(standings.Of(Row(record))); });
}

Standing StandingOf(Database& database, const Branding& branding, int supplierId) {
  Standing standing;
  standing.supplierId = supplierId;
  const auto last = LastSentTo(database, supplierId);
  if (!last) return standing;
  FormPrints prints(branding.folders.data);
  Compare(standing, *last, OrganisationIngredients(branding), ReadSupplier(database, supplierId).row,
          LinkedForms(database, supplierId), prints);
  return standing;
}

std::string DeliveryDate(std::chrono::system_clock::time_point when) {
  return IsoMoment(when);
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
