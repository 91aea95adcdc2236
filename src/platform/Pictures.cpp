#include "platform/Pictures.h"

#include <QImageReader>

#include "platform/Files.h"
#include "platform/RuntimeError.h"

namespace tarvolinex {

Picture LoadPicture(std::string_view path) {
  if (!FileExists(path)) throw RuntimeError(kFileNotFound, "The picture " + std::string(path) + " does not exist");
  QImageReader reader(QString::fromStdString(NativePath(path)));
  reader.setDecideFormatFromContent(true);
  const QSize size = reader.size();
  constexpr qint64 kLargest = 64'000'000;
  if (qint64{size.width()} * size.height() > kLargest) {
    throw RuntimeError(kBadPicture, "The picture " + std::string(path) + " is too large");
  }
  const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
  if (image.isNull()) {
    throw RuntimeError(kBadPicture,
                       "The picture " + std::string(path) + " cannot be read: " + reader.errorString().toStdString());
  }
  Picture picture{image.width(), image.height(), {}};
  picture.pixels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    picture.pixels.insert(picture.pixels.end(), line, line + image.width());
  }
  return picture;
}

}  // namespace tarvolinex
