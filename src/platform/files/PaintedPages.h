// The pages of a document, for whoever has a device of the toolkit to paint them on: a file's or a printer's.
#pragma once

#include <memory>

#include "platform/files/RichDocument.h"

class QPagedPaintDevice;

namespace tarvolinex {

class PaintedPages {
 public:
  // Sets the device to A4 and lays the document out for it. Both must outlive this.
  // REQUIRES: there is an application of the toolkit.
  PaintedPages(const RichDocument& document, QPagedPaintDevice& device);
  ~PaintedPages();
  PaintedPages(const PaintedPages&) = delete;
  PaintedPages& operator=(const PaintedPages&) = delete;

  // Of all pages one below the other, in points of the device: no coordinate is larger.
  double Height() const;
  // Returns false when the device does not take them.
  bool Paint();

 private:
  struct Layout;
  std::unique_ptr<Layout> layout_;
};

}  // namespace tarvolinex
