#include "platform/files/PaintedPages.h"

#include <QAbstractTextDocumentLayout>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextImageFormat>
#include <QTextObjectInterface>
#include <QTextTable>
#include <cmath>
#include <memory>

namespace tarvolinex {

namespace {

constexpr double kUnitsAnInch = 96;

QString TextOf(const std::string& text) {
  return QString::fromStdString(text);
}

// The device's points in a length of the document.
double Scale(const QPaintDevice& device) {
  return device.logicalDpiX() / kUnitsAnInch;
}

// Without hinting, which is for screens. The toolkit draws no ligatures where letters are spaced, so they are, by less
// than can be seen: who looks for "finance" in the file would not find one that begins with a ligature.
QFont FontForPaper(QFont font) {
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
  return font;
}

// On white: the files that are kept for years know no transparency.
QImage ImageOf(const Picture& picture) {
  const QImage source(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width, picture.height,
                      QImage::Format_ARGB32);
  QImage opaque(source.size(), QImage::Format_RGB32);
  opaque.fill(Qt::white);
  QPainter(&opaque).drawImage(0, 0, source);
  return opaque;
}

void PaintLabel(QPainter& painter, const Drawing::Label& label, const QFont& font, double scale) {
  QFont sized(font);
  // The painter's own scale makes blurred text of small sizes; a font of the device's points does not.
  sized.setPixelSize(std::max(1, qRound(label.size * scale)));
  painter.setFont(sized);
  painter.setPen(QColor::fromRgb(label.colour));
  const QString text = TextOf(label.text);
  const double width = QFontMetricsF(sized, painter.device()).horizontalAdvance(text);
  const double before = label.anchor == Drawing::Anchor::Start ? 0
                        : label.anchor == Drawing::Anchor::End ? width
                                                               : width / 2;
  const double x = label.x * scale - before, height = label.size * scale;
  if (label.onWhite) painter.fillRect(QRectF(x, label.baseline * scale - height * 0.8, width, height), Qt::white);
  painter.drawText(QPointF(x, label.baseline * scale), text);
}

void PaintDrawing(QPainter& painter, const Drawing& drawing, const QRectF& place, const QFont& font) {
  const double scale = std::min(place.width() / drawing.width, place.height() / drawing.height);
  painter.save();
  painter.translate(place.topLeft());
  for (const Drawing::Box& box : drawing.boxes) {
    painter.fillRect(QRectF(box.left * scale, box.top * scale, box.width * scale, box.height * scale),
                     QColor::fromRgb(box.colour));
  }
  for (const Drawing::Line& line : drawing.lines) {
    painter.setPen(QPen(QColor::fromRgb(line.colour), line.width * scale, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QLineF(line.fromX * scale, line.fromY * scale, line.toX * scale, line.toY * scale));
  }
  for (const Drawing::Label& label : drawing.labels) PaintLabel(painter, label, font, scale);
  painter.restore();
}

// Draws what an <img> names. The layout finds the interface by its name among those of an object; this class has no
// signals, so it answers by itself.
class Images : public QObject, public QTextObjectInterface {
 public:
  explicit Images(const RichDocument& document) : document_(document) {}
  void* qt_metacast(const char* name) override {
    if (std::string_view(name) == qobject_interface_iid<QTextObjectInterface*>()) {
      return static_cast<QTextObjectInterface*>(this);
    }
    return QObject::qt_metacast(name);
  }
  // As large as the width and the height that are asked for let it be.
  QSizeF intrinsicSize(QTextDocument* text, int, const QTextFormat& format) override {
    const QTextImageFormat image = format.toImageFormat();
    const QSizeF asked(image.width(), image.height());
    return OwnSize(image.name().toStdString(), asked).scaled(asked, Qt::KeepAspectRatio) *
           Scale(*text->documentLayout()->paintDevice());
  }
  void drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int, const QTextFormat& format) override {
    const std::string name = format.toImageFormat().name().toStdString();
    if (const auto drawing = document_.drawings.find(name); drawing != document_.drawings.end()) {
      PaintDrawing(*painter, drawing->second, place, FontForPaper(format.toCharFormat().font()));
    } else if (const auto picture = document_.pictures.find(name); picture != document_.pictures.end()) {
      painter->drawImage(place, ImageOf(picture->second));
    }
  }

 private:
  QSizeF OwnSize(const std::string& name, QSizeF otherwise) const {
    const auto drawing = document_.drawings.find(name);
    if (drawing != document_.drawings.end()) return {drawing->second.width, drawing->second.height};
    const auto picture = document_.pictures.find(name);
    if (picture != document_.pictures.end()) return QSizeF(picture->second.width, picture->second.height);
    return otherwise;
  }
  const RichDocument& document_;
};

// One text of the document, laid out for the device on pages of that size; a height of 0 or less: on one, as high as it
// is. Laying out is what takes the time, so all that it depends on is set before the text.
class LaidOut {
 public:
  LaidOut(const RichDocument& document, const std::string& html, QPagedPaintDevice& device, QSizeF page)
      : images_(document), page_(page) {
    QTextOption option = text_.defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);  // a name without blanks is broken, not cut
    text_.setDefaultTextOption(option);
    text_.setDocumentMargin(0);
    text_.setDefaultFont(FontForPaper(text_.defaultFont()));
    text_.setUndoRedoEnabled(false);
    text_.setUseDesignMetrics(true);
    text_.documentLayout()->registerHandler(QTextFormat::ImageObject, &images_);
    text_.documentLayout()->setPaintDevice(&device);
    text_.setPageSize(page);
    text_.setHtml(TextOf(html));
    KeepTablesTogether();
  }
  int Pages() const { return text_.pageCount(); }
  double Height() const { return text_.size().height(); }
  void Paint(QPainter& painter, int page) {
    const QRectF part(QPointF(0, page * page_.height()), page_.height() > 0 ? page_ : text_.size());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = part;
    painter.save();
    painter.translate(-part.topLeft());
    painter.setClipRect(part);
    text_.documentLayout()->draw(&painter, context);
    painter.restore();
  }

 private:
  // From the top down: a table that is moved moves the ones after it.
  void KeepTablesTogether() {
    if (page_.height() <= 0 || text_.pageCount() < 2) return;
    for (QTextFrame* frame : text_.rootFrame()->childFrames()) {
      auto* table = qobject_cast<QTextTable*>(frame);
      if (!table || !IsTorn(*table)) continue;
      QTextTableFormat format = table->format();
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      table->setFormat(format);
    }
  }

  // A table without a head stays on one page where it can; one that goes on begins with a row or two below its head.
  bool IsTorn(const QTextTable& table) const {
    constexpr int kRowsWithHead = 2;
    const QRectF place = text_.documentLayout()->frameBoundingRect(const_cast<QTextTable*>(&table));
    const int head = table.format().headerRowCount(), last = std::min(head + kRowsWithHead, table.rows()) - 1;
    const double end = head == 0 ? place.bottom() : EndOfRow(table, last);
    const double room = page_.height(), start = place.top();
    return std::floor(start / room) != std::floor((end - 1) / room) && end - start <= room &&
           start > std::floor(start / room) * room + 1;
  }
  double EndOfRow(const QTextTable& table, int row) const {
    double end = 0;
    for (int column = 0; column < table.columns(); ++column) {
      const QTextBlock block = table.cellAt(row, column).lastCursorPosition().block();
      end = std::max(end, text_.documentLayout()->blockBoundingRect(block).bottom());
    }
    return end;
  }

  Images images_;
  QTextDocument text_;
  const QSizeF page_;
};

void SetToA4(QPagedPaintDevice& device) {
  constexpr QMarginsF kMargins(18, 15, 18, 12);
  device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, kMargins, QPageLayout::Millimeter));
}

// The foot of one page.
class Foot {
 public:
  Foot(const RichDocument& document, QPagedPaintDevice& device, int page, int pages)
      : text_(document, document.footer(page, pages), device, QSizeF(device.width(), 0)) {}
  double Height() const { return text_.Height(); }
  void Paint(QPainter& painter, double paperHeight) {
    painter.save();
    painter.translate(0, paperHeight - Height());
    text_.Paint(painter, 0);
    painter.restore();
  }

 private:
  LaidOut text_;
};

}  // namespace

struct PaintedPages::Layout {
  Layout(const RichDocument& of, QPagedPaintDevice& on)
      : document(of),
        device(on),
        foot(of.footer ? std::make_unique<Foot>(of, on, 1, 1) : nullptr),
        body(of, of.html, on, QSizeF(on.width(), on.height() - (foot ? foot->Height() + kAboveFoot * Scale(on) : 0))) {}
  static constexpr double kAboveFoot = 12;
  const RichDocument& document;
  QPagedPaintDevice& device;
  std::unique_ptr<Foot> foot;
  LaidOut body;
};

PaintedPages::PaintedPages(const RichDocument& document, QPagedPaintDevice& device) {
  SetToA4(device);
  layout_ = std::make_unique<Layout>(document, device);
}

PaintedPages::~PaintedPages() = default;

double PaintedPages::Height() const {
  return layout_->body.Pages() * static_cast<double>(layout_->device.height());
}

bool PaintedPages::Paint() {
  auto& [document, device, foot, body] = *layout_;
  const int pages = body.Pages();
  QPainter painter;
  if (!painter.begin(&device)) return false;
  for (int page = 0; page < pages; ++page) {
    if (page > 0 && !device.newPage()) return false;
    body.Paint(painter, page);
    if (!foot) continue;
    if (pages > 1) foot = std::make_unique<Foot>(document, device, page + 1, pages);
    foot->Paint(painter, device.height());
  }
  return painter.end();
}

}  // namespace tarvolinex
