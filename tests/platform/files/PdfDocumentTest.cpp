#include "platform/files/PdfDocument.h"

#include <sstream>

#include "support/Fixture.h"

namespace tarvolinex {

// Files are read by other programs than the one that writes them.
class PdfDocumentTest : public ::testing::Test {
 protected:
  PdfDocumentTest() {
    document.title = "Angebot für Łódź";
    document.author = "North & Gate <\"O'Neill\">";
    document.language = "en-GB";
    document.footer = [](int page, int pages) {
      return "<p>Page " + std::to_string(page) + " of " + std::to_string(pages) + "</p>";
    };
  }
  std::string Output(const std::string& command) {
    const std::string out = folder.Path() + "/out";
    EXPECT_EQ(std::system((command + " >" + out + " 2>&1").c_str()), 0) << command << "\n" << ReadFile(out);
    return ReadFile(out);
  }
  std::string Text() { return Output("pdftotext -layout " + Written() + " -"); }
  std::string Written() {
    WritePdf(document, path);
    return path;
  }
  static int Count(const std::string& text, const std::string& word) {
    int count = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++count;
    return count;
  }
  // By the checkers that there are.
  void ExpectArchivable() {
    Output("qpdf --check " + path);
    const std::string jars = "/usr/share/java/", checker = "org.apache.pdfbox.preflight.Validator_A1b";
    std::string path_ = ".";
    for (const char* jar :
         {"preflight", "pdfbox2", "xmpbox", "fontbox2", "commons-logging", "javax.activation", "jaxb-api"})
      path_ += ":" + jars + jar + ".jar";
    EXPECT_NE(Output("java -cp " + path_ + " " + checker + " " + path).find("is a valid PDF/A-1b file"),
              std::string::npos);
  }

  TemporaryFolder folder;
  const std::string path = folder.Path() + "/sheet.pdf";
  RichDocument document;
};

TEST_F(PdfDocumentTest, TellsWhatItIsAndCanBeSearched) {
  document.html =
      "<html><body><p>Official quotation: <b>first payment</b> £1,234.50 €</p><img src='logo' width=90 height=90>"
      "<img src='chart' width=300 height=90></body></html>";
  document.pictures["logo"] = {2, 1, {0x80FF0000, 0x00000000}};
  document.drawings["chart"] = {300,
                                90,
                                {{0, 0, 20, 20, 0xFF8800}},
                                {{0, 0, 9, 9, 1, 0x112233}},
                                {{150, 20, 10, Drawing::Anchor::Middle, 0, "£20,000", true}}};
  const std::string text = Text();
  for (const char* part : {"Official quotation: first payment £1,234.50 €", "£20,000", "Page 1 of 1"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  }
  const std::string info = Output("pdfinfo " + path), fonts = Output("pdffonts " + path);
  for (const char* part : {"Angebot für Łódź", "North & Gate <\"O'Neill\">", "595 x 842 pts (A4)"}) {
    EXPECT_NE(info.find(part), std::string::npos) << part << "\n" << info;
  }
  EXPECT_EQ(Count(fonts, "yes no  yes"), 2) << fonts;  // embedded, whole names, searchable
  EXPECT_NE(Output("qpdf --json " + path).find("\"/Lang\": \"u:en-GB\""), std::string::npos);
  ExpectArchivable();
}

TEST_F(PdfDocumentTest, LongTablesRepeatTheirHeadAndShortOnesStayTogether) {
  std::ostringstream html;
  const std::string name(60, 'W');
  html << "<table width='100%'><thead><tr><td>Headline</td><td>" << name << name << "</td></tr></thead>";
  for (int row = 1; row <= 130; ++row) html << "<tr><td>row" << row << ".</td><td>x</td></tr>";
  html << "</table>";
  for (int block = 0; block < 12; ++block) {
    html << "<table><tr><td>begin" << block << "</td></tr>";
    for (int row = 0; row < 12; ++row) html << "<tr><td>part" << block << "</td></tr>";
    html << "</table>";
  }
  document.html = html.str();
  std::istringstream pages(Text());
  int headlines = 0, rows = 0, letters = 0;
  for (std::string page; std::getline(pages, page, '\f');) {
    if (page.empty()) continue;
    EXPECT_EQ(Count(page, "Page "), 1);
    EXPECT_EQ(Count(page, "Headline"), Count(page, "row") > 0 ? 1 : 0) << page;
    headlines += Count(page, "Headline");
    rows += Count(page, "row");
    letters = std::max(letters, Count(page, "W"));
    for (int block = 0; block < 12; ++block) {
      const int parts = Count(page, "part" + std::to_string(block) + "\n");
      EXPECT_TRUE(parts == 0 || parts == 12) << page;
    }
  }
  EXPECT_GT(headlines, 2);
  EXPECT_EQ(rows, 130);
  EXPECT_EQ(letters, 120);  // nothing of a name that is wider than its column is cut
  ExpectArchivable();
}

}  // namespace tarvolinex
