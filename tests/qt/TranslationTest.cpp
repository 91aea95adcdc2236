#include "platform/text/Translation.h"

#include "Player.h"
#include "core/Aliases.h"
#include "core/Reports.h"
#include "qt/Binder.h"
#include "qt/Designs.h"
#include "qt/Look.h"
#include "qt/Translator.h"
#include "ui/batch/FrmBatch.h"
#include "ui/batch/FrmSent.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FRmCreateDB.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmConflict.h"
#include "ui/main/FrmLeaseOrgDetails.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/FrmSearch.h"
#include "ui/main/FrmSharedDatabase.h"
#include "ui/main/frmSendCalc.h"
#include "ui/options/FrmOptions.h"
#include "ui/options/frmFormEditWarning.h"
#include "ui/quotes/FrmQuotes.h"
#include "ui/quotes/FrmSchedule.h"
#include "ui/quotes/FrmTerms.h"

namespace tarvolinex {

using Texts = std::set<std::string>;

// A language in which every text is the English one with "~" before it; the build makes it of the list of texts.
struct Language {
  Language() { Use("qaa", "C.UTF-8"); }
  ~Language() { Use("", "C"); }
  static void Use(const char* language, const char* locale) {
    setenv("LANGUAGE", language, 1);
    setenv("LC_ALL", locale, 1);
    UseTranslations(TRANSLATIONS_FOLDER);
    TranslateDesigns();
  }
};

class Translated : Language, public SampleWindow {};

void AddEnglish(const QString& text, Texts& found) {
  static const QRegularExpression word("[[:alpha:]]{2}"),
      same("^(\\.exe|\\.zip|STARTTLS|TLS|Tarvolinex.*|www.example.com|Scroll (Left|Right))$");
  if (!text.contains('~') && word.match(text).hasMatch() && !same.match(text).hasMatch()) found.insert(Held(text));
}

// All that the window shows or says to a screen reader, down to the entries of its lists.
void AddEnglish(const QAccessibleInterface* part, Texts& found) {
  if (!part) return;
  for (const auto kind : {QAccessible::Name, QAccessible::Description}) AddEnglish(part->text(kind), found);
  for (int i = 0; i < part->childCount(); ++i) AddEnglish(part->child(i), found);
}

Texts EnglishIn(QWidget& root) {
  Texts found;
  AddEnglish(QAccessible::queryAccessibleInterface(&root), found);
  for (const QWidget* widget : root.findChildren<QWidget*>()) {
    for (const QAction* action : widget->actions()) AddEnglish(action->text() + action->toolTip(), found);
    AddEnglish(widget->toolTip(), found);
  }
  return found;
}

// What the sample database holds stays as it is.
Texts Data(const FrmMain& form, const FrmOptions& options) {
  Texts data = {"Dealer", "*" + form.supplier.TxtSupplier(0).Text() + "*",
                form.run.SupplierCalcSettings.AdditionalPremiumMsg.Trimmed()};
  for (const ListView* list : {&form.LvwSuppliers, &form.forms.LvwForms, &form.send.lvSendContacts}) {
    for (const auto& row : list->Rows()) {
      data.insert(row.text);
      data.insert(row.cells.begin(), row.cells.end());
    }
  }
  for (const auto& contact : form.contacts.LstContacts.Items()) data.insert(contact.text);
  for (const auto& icon : options.CboIcons.Items()) data.insert(icon.text);
  for (const auto& node : options.TreeOptions.Nodes()) {
    if (node.parent == "FORMS") data.insert(node.text);
  }
  return data;
}

// What takes the focus says to a screen reader what it is. Swatches and boxes may get their names when they are shown.
std::vector<std::string> Nameless(const Window& window, const Binder& binder) {
  std::vector<std::string> found;
  for (const Control* control : window.Controls()) {
    QWidget* widget = binder.WidgetOf(*control);
    if (!widget || widget->focusPolicy() == Qt::NoFocus || dynamic_cast<const TabStrip*>(control)) continue;
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(widget);
    if (!read || read->text(QAccessible::Name).isEmpty()) found.push_back(control->WidgetName());
  }
  return found;
}

TEST_F(Translated, EveryControlHasItsWidgetEveryWidgetItsControlAndANameAndEveryTextIsLookedUp) {
  WebServer = "www.example.com";
  FrmAbout about(run);
  FrmLeaseOrgDetails details(run, [] {});
  FrmSearch search(run, form.database, [](int, int) {});
  FrmIconEdit editor(run);
  FrmOptions options(run, form.database);
  frmFormEditWarning warning(run, "");
  FRmCreateDB create(run, [](bool&) { return false; });
  FrmMailSettings mail(run);
  FrmSharedDatabase shared(run, [] { return false; });
  Sending sending;
  frmSendCalc send(run, sending, form.send);
  std::vector<MetField> met(1);
  FrmConflict conflict("~", met);
  form.quote.TxtProCalc(kBoxCapitalCost).Type("12500");
  FrmSchedule schedule(run, form.quote.Quote, form.quote.Start());
  FrmTerms terms(run, {kModeForward, form.quote.AskedQuote, form.quote.Terms()}, {});
  std::vector<RemovedRows> removed;
  FrmQuotes quotes(run, form.database, {}, removed);
  FrmBatch batch(run, form.database, OwnBranding(), {}, {});
  FrmSent sent(run, form.database, {});
  quotes.Load();
  batch.Load();
  sent.Load();
  options.Load();
  editor.SetLoadPic("");
  const Texts data = Data(form, options);
  for (Frame* frame : {&options.FraTextString, &options.FraValue, &options.FraColour, &options.FraYesNo,
                       &options.FraDepOptions, &options.FraLogo, &options.FraLanguage, &options.FraMeaning}) {
    frame->SetCaption("~");
  }
  options.ChkYesNo.SetCaption("~");
  options.ChkdepSelect(1).SetCaption("~");
  const auto check = [&](const Window& window, QWidget& root, const Binder& binder) {
    Texts english = EnglishIn(root);
    for (const std::string& text : data) english.erase(text);
    EXPECT_EQ(english, Texts()) << window.Name();
    EXPECT_EQ(binder.Mismatches(), std::vector<std::string>()) << window.Name();
    EXPECT_EQ(Nameless(window, binder), std::vector<std::string>()) << window.Name();
  };
  check(form, Root(), *desktop.BinderOf(form));
  for (Window* window :
       std::initializer_list<Window*>{&about, &details, &search, &editor, &options, &warning, &create, &mail, &shared,
                                      &send, &conflict, &schedule, &terms, &quotes, &batch, &sent}) {
    const auto root = MakeDesign(window->Name());
    const Binder binder(*window, *root);
    check(*window, *root, binder);
  }
}

TEST_F(Translated, MessagesAndTheValuesInThem) {
  WhenWaiting<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle() + box.text(), "~Error~Load failed");
    box.accept();
  });
  run.ShowError("Load failed");
  EXPECT_EQ(run.ReplaceAliases("Saving <SUPPLIER> Failed"), "~Saving Dealer Failed");
  // What goes in is not searched again, and a "%" that stands for nothing stays.
  EXPECT_EQ(Tr("Writing %1: %2", {"100%2.dat", "why"}), "~Writing 100%2.dat: why");
  EXPECT_EQ(Tr("% of %1 Cost", {"Asset"}), "~% of Asset Cost");
  EXPECT_EQ(Tr("") + Tr("a text that nobody has listed"), "a text that nobody has listed");
}

}  // namespace tarvolinex
