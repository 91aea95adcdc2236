#include "ui/options/OptionNodes.h"

#include <algorithm>

#include "calc/InputRules.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

using Prefs = CalculatorPreferencesRecord;
using Page = PageOptions;
using Edit = OptionEditor;

constexpr int kAlias = 25, kSymbol = 4;             // characters
constexpr int kLongestTerm = 200, kPayments = 100;  // months, payments
constexpr int kHundred = 100;                       // percent
constexpr int kMostMoney = 99'999'999;              // whole currency units

constexpr OptionNode kNodes[] = {
    {"ALAISES", "", Marked("Alias and Names"),
     Marked("Your organisation's own words. They stand in this program's windows and in every calculator that you "
            "publish from now on; calculators that are already with dealers keep theirs.")},
    {"ALAISES0", "ALAISES", Marked("Supplier/Vendor Alias"),
     Marked("What you call the companies that sell the equipment, such as Dealer or Vendor. You read it in this "
            "program's menus, windows and messages."),
     Edit::TextLine, &Prefs::AliasSupplier, 0, kAlias},
    {"ALAISES1", "ALAISES", Marked("Calculator Name"),
     Marked("What the calculator is called: it heads the page that dealers open, names the installed program and "
            "stands in this program's menus."),
     Edit::TextLine, &Prefs::AliasCalcName, 0, kAlias},
    {"ALAISES2", "ALAISES", Marked("Residual/Final Payment Alias"),
     Marked("Your word for what is left to pay at the end of a lease. You read it here beside the quote, dealers on "
            "the calculator."),
     Edit::TextLine, &Prefs::AliasResidual, 0, kAlias},
    {"ALAISES3", "ALAISES", Marked("Deposit/Initial Payment Alias"),
     Marked("Your word for what is paid at the start of a lease. You read it here beside the quote, dealers on the "
            "calculator."),
     Edit::TextLine, &Prefs::AliasDeposit, 0, kAlias},
    {"ALAISES4", "ALAISES", Marked("VAT/Sales Tax Alias"),
     Marked("Your word for the tax on the payments, such as VAT or GST. You read it here beside the results, dealers "
            "on the calculator."),
     Edit::TextLine, &Prefs::AliasVat, 0, kAlias},
    {"ALAISES5", "ALAISES", Marked("Maintenance Alias"),
     Marked("Your word for the service that can be included in each payment. You read it here beside the quote, "
            "dealers on the calculator."),
     Edit::TextLine, &Prefs::AliasMaint, 0, kAlias},
    {"ALAISES6", "ALAISES", Marked("Capital/Equipment Alias"),
     Marked("Your word for what is leased. You read it here beside the quote, dealers on the calculator and in its "
            "limits."),
     Edit::TextLine, &Prefs::AliasCapEquip, 0, kAlias},
    {"COLOURS", "", Marked("Colours"),
     Marked("What the calculators look like for your dealers. A text that could not be read on its background is made "
            "lighter or darker by the page itself.")},
    {"COLOURS0", "COLOURS", Marked("Calculator Background Colour"),
     Marked("Behind the questions and results of the calculator that your dealers open."), Edit::Swatch,
     &Prefs::CalcBackColour},
    {"COLOURS1", "COLOURS", Marked("Caption Colour"),
     Marked("Of the headings and of the words beside each box of the calculator."), Edit::Swatch,
     &Prefs::CaptionColour},
    {"COLOURS2", "COLOURS", Marked("Input box Back Colour"), Marked("Inside the boxes that your dealers type into."),
     Edit::Swatch, &Prefs::InputBackColour},
    {"COLOURS3", "COLOURS", Marked("Input box Back Text Colour"), Marked("Of what your dealers type into the boxes."),
     Edit::Swatch, &Prefs::InputTextColour},
    {"COLOURS4", "COLOURS", Marked("Border Colour"),
     Marked("Of the answer, of the main buttons and of what is chosen on the calculator."), Edit::Swatch,
     &Prefs::BorderColour},
    {"COLOURS5", "COLOURS", Marked("Lease Organisation Details Caption Colour"),
     Marked("Of your organisation's name and links at the foot of the calculator."), Edit::Swatch,
     &Prefs::OrgCaptionColour},
    {"COLOURS6", "COLOURS", Marked("Main Page Background Colour"),
     Marked("Around the calculator, where no background picture covers it."), Edit::Swatch, &Prefs::PageBackColour},
    {"MAXMINS", "", Marked("Max and Mins"),
     Marked("What your dealers can ask the calculator for. Your own quotes in this program are not limited by them.")},
    {"TERM", "MAXMINS", Marked("Lease Term Max/Min"),
     Marked("The shortest and the longest lease that your dealers can choose.")},
    {"TERM0", "TERM", Marked("Minimum Term (Months)"),
     Marked("The shortest lease that your dealers can choose on the calculator. Your own quotes here are not limited."),
     Edit::Number, &Prefs::MinTerm, kInputCount, kLongestTerm},
    {"TERM1", "TERM", Marked("Maximum Term (Months)"),
     Marked("The longest lease that your dealers can choose on the calculator. Your own quotes here are not limited."),
     Edit::Number, &Prefs::MaxTerm, kInputCount, kLongestTerm},
    {"CAPCOST", "MAXMINS", Marked("<CAPEQUIP> Cost Max/Min"),
     Marked("The smallest and the largest cost that the calculator works with.")},
    {"CAPCOST0", "CAPCOST", Marked("Minimum <CAPEQUIP> Cost (£)"),
     Marked("The calculator refuses a smaller cost and tells the dealer this amount. Your own quotes here are not "
            "limited."),
     Edit::Number, &Prefs::MinCapitalCost, kInputAmount, kMostMoney},
    {"CAPCOST1", "CAPCOST", Marked("Maximum <CAPEQUIP> Cost (£)"),
     Marked("The calculator refuses a larger cost and tells the dealer this amount. Your own quotes here are not "
            "limited."),
     Edit::Number, &Prefs::MaxCapitalCost, kInputAmount, kMostMoney},
    {"DEPOSIT", "MAXMINS", Marked("<DEPOSIT> Cost Max/Min"),
     Marked("How much your dealers can ask to be paid at the start of a lease.")},
    {"DEP0", "DEPOSIT", Marked("Maximum <DEPOSIT> Percentage of <CAPEQUIP> (%)"),
     Marked("The most that can be paid at the start, as a part of the cost; the calculator refuses more."),
     Edit::Number, &Prefs::MaxDepositPercent, kInputPercent, kHundred},
    {"DEP1", "DEPOSIT", Marked("Minimum <DEPOSIT> Percentage of <CAPEQUIP> (%)"),
     Marked("The least that must be paid at the start, as a part of the cost; the calculator refuses less. 0 lets "
            "dealers leave it out."),
     Edit::Number, &Prefs::MinDepositPercent, kInputPercent, kHundred},
    {"DEP2", "DEPOSIT", Marked("Minimum Advanced Payments"),
     Marked("The fewest payments that are made in advance where the calculator offers advanced payments."),
     Edit::Number, &Prefs::MinAdvancedPayments, kInputCount, kPayments},
    {"RESID", "MAXMINS", Marked("Residual Max/Min"),
     Marked("How much your dealers can leave to be paid at the end of a lease.")},
    {"RESID0", "RESID", Marked("Minimum <RESIDUAL> Percentage of <CAPEQUIP> (%)"),
     Marked("The least that is left to pay at the end, as a part of the cost; the calculator refuses less."),
     Edit::Number, &Prefs::MinResidualPercent, kInputPercent, kHundred},
    {"RESID1", "RESID", Marked("Maximum <RESIDUAL> Percentage of <CAPEQUIP> (%)"),
     Marked("The most that is left to pay at the end, as a part of the cost; the calculator refuses more."),
     Edit::Number, &Prefs::MaxResidualPercent, kInputPercent, kHundred},
    {kFormsKey, "", Marked("Form/Information Page Management"),
     Marked("Enquiry forms and information pages that travel with the calculators. Which of them a <SUPPLIER> gets is "
            "ticked in the main window.")},
    {"GRAPHICS", "", Marked("Logo and Background Graphics"),
     Marked("The pictures that the calculators show to your dealers.")},
    {"GRAPHICSA", "GRAPHICS", Marked("Header Logo"),
     Marked("The picture at the head of every calculator that you publish.")},
    {"GRAPHICS1", "GRAPHICSA", Marked("Header Logo On/Off"),
     Marked("Whether your dealers see the logo at the head of the calculator. Switched off, the picture stays here for "
            "later."),
     Edit::OnOff, &Prefs::ShowHeaderLogo},
    {"GRAPHICS2",
     "GRAPHICSA",
     Marked("Import New Header Logo"),
     Marked("The picture is copied as soon as you leave this setting, also when you then press Cancel. It replaces the "
            "logo of all calculators that you publish from now on."),
     Edit::PictureImport,
     {}},
    {"GRAPHICSB", "GRAPHICS", Marked("Background Picture"),
     Marked("The picture behind every calculator that you publish.")},
    {"GRAPHICS3", "GRAPHICSB", Marked("Background Picture Logo On/Off"),
     Marked(
         "Whether your dealers see the picture behind the calculator. Switched off, the picture stays here for later."),
     Edit::OnOff, &Prefs::ShowBackground},
    {"GRAPHICS4",
     "GRAPHICSB",
     Marked("Import New Background Picture"),
     Marked("The picture is copied as soon as you leave this setting, also when you then press Cancel. It replaces the "
            "background of all calculators that you publish from now on."),
     Edit::PictureImport,
     {}},
    {"DEPOPS", "", Marked("Available <DEPOSIT> Types"),
     Marked("In which ways your dealers can enter what is paid at the start. At least one stays offered."),
     Edit::DepositTypes, &Prefs::DepositOptions},
    {"ICON", "", Marked("Icon"),
     Marked("The picture of the install file that your dealers receive, and of the calculator once it is installed. "
            "Only icons of 32 by 32 dots in 16 colours can be used; Edit draws one."),
     Edit::IconList, &Prefs::IconName},
    {"CURRENCY", "", Marked("Currency Symbol"), Marked("Stands before every amount, here and on the calculators."),
     Edit::TextLine, &Prefs::CurrencySymbol, 0, kSymbol},
    {"TAX", "", Marked("VAT/Sales Tax Percentage"),
     Marked("Added to payments wherever an amount with tax is shown, here and on the calculators."), Edit::Number,
     &Prefs::TaxRate, kInputPercent, kHundred},
    {"PAGE", "", Marked("Calculator Page"),
     Marked(
         "What the page of the calculators shows and says beside its figures. It counts for the calculators that you "
         "publish from now on.")},
    {"PAGE0", "PAGE", Marked("Language"),
     Marked("Of the fixed words, the numbers and the dates on the calculator; your own words stay as you write them. "
            "Without a choice each reader sees the language of the browser, where the page has it."),
     Edit::Language, &Page::language},
    {"PAGE1", "PAGE", Marked("Total Payable On/Off"),
     Marked("Whether the calculator says what is paid in all, and what the lease costs beside the <CAPEQUIP>. Switched "
            "off, neither figure is on the page."),
     Edit::OnOff, &Page::totals},
    {"PAGE2", "PAGE", Marked("Quotes Valid For (Days)"),
     Marked("How long a quote of the calculator holds: its last day stands on paper and in the copied text. With 0 no "
            "day is named."),
     Edit::Number, &Page::validDays, kInputCount, kMostDays},
    {"PAGE3", "PAGE", Marked("Rates May Change After (Days)"),
     Marked("So long after it was published the calculator begins to say that its rates may have changed, and how to "
            "ask you for new ones. It goes on working. With 0 it never says so."),
     Edit::Number, &Page::ratesDays, kInputCount, kMostDays},
    {"PAGEWORDS", "PAGE", Marked("Words Explained"),
     Marked(
         "What your dealers and their customers read when they ask the calculator what a word means. Where you write "
         "nothing, the page explains the word itself.")},
    {"PAGEWORD0", "PAGEWORDS", Marked("What <VAT> Is"),
     Marked("Left empty, the calculator says which rate is added to each amount."), Edit::Meaning, &Page::tax, 0,
     kLongestExplanation},
    {"PAGEWORD1", "PAGEWORDS", Marked("What <DEPOSIT> Is"),
     Marked("Left empty, the calculator says that it is paid at the start and makes each payment smaller."),
     Edit::Meaning, &Page::deposit, 0, kLongestExplanation},
    {"PAGEWORD2", "PAGEWORDS", Marked("What Advanced Payments Are"),
     Marked("Left empty, the calculator says that some payments are made at the start and the others become smaller."),
     Edit::Meaning, &Page::advance, 0, kLongestExplanation},
    {"PAGEWORD3", "PAGEWORDS", Marked("What <RESIDUAL> Is"),
     Marked("Left empty, the calculator says that it stays to the end of the term and makes each payment smaller."),
     Edit::Meaning, &Page::residual, 0, kLongestExplanation},
    {"PAGEWORD4", "PAGEWORDS", Marked("What <MAINT> Is"),
     Marked("Left empty, the calculator says that it is service of the equipment, paid with each payment."),
     Edit::Meaning, &Page::maintenance, 0, kLongestExplanation},
};

}  // namespace

const char* const kFormHint = Marked(
    "A page that travels with the calculators of the suppliers for whom it is ticked in the main window. Its name is "
    "what "
    "dealers choose it by; a page that is taken from the available ones is taken from every supplier when you press "
    "OK.");

std::span<const OptionNode> OptionNodes() {
  return kNodes;
}

const OptionNode* FindOptionNode(std::string_view key) {
  const auto* found =
      std::find_if(std::begin(kNodes), std::end(kNodes), [&](const OptionNode& node) { return key == node.key; });
  return found == std::end(kNodes) ? nullptr : found;
}

}  // namespace tarvolinex
