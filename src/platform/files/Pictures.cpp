#include "platform/files/Pictures.h"

#include <QImageReader>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::unique_ptr<QImageReader> Open(std::string_view path) {
  if (!FileExists(path)) throw RuntimeError(kFileNotFound, Tr("The picture %1 does not exist", {path}));
  auto reader = std::make_unique<QImageReader>(QString::fromStdString(NativePath(path)));
  reader->setDecideFormatFromContent(true);
  // The library also knows drawings and documents, which no browser shows under the name of a picture.
  const QByteArrayList known = {"bmp", "cur", "gif", "ico", "jpeg", "png"};
  if (!known.contains(reader->format())) {
    throw RuntimeError(kBadPicture, Tr("The picture %1 is of no known kind", {path}));
  }
  return reader;
}

// The reader's present picture.
Picture Read(QImageReader& reader, std::string_view path) {
  const QSize size = reader.size();
  constexpr qint64 kLargest = 64'000'000;
  if (qint64{size.width()} * size.height() > kLargest) {
    throw RuntimeError(kBadPicture, Tr("The picture %1 is too large", {path}));
  }
  const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32);
  if (image.isNull()) {
    throw RuntimeError(kBadPicture,
                       Tr("The picture %1 cannot be read: %2", {path, reader.errorString().toStdString()}));
  }
  Picture picture{image.width(), image.height(), {}};
  picture.pixels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    picture.pixels.insert(picture.pixels.end(), line, line + image.width());
  }
  return picture;
}

}  // namespace

Picture LoadPicture(std::string_view path) {
  return Read(*Open(path), path);
}

Picture LoadPicture(std::string_view path, int width, int height) {
  const auto reader = Open(path);
  const int count = std::max(reader->imageCount(), 1);
  for (int i = 0; i < count; ++i) {
    if (i > 0 && !reader->jumpToImage(i)) break;
    try {
      if (Picture picture = Read(*reader, path); picture.width == width && picture.height == height) return picture;
    } catch (const RuntimeError&) {
      // Another picture of the file may be whole.
    }
  }
  throw RuntimeError(kBadPicture, Tr("The picture %1 holds none of %2 by %3 pixels",
                                     {path, std::to_string(width), std::to_string(height)}));
}

}  // namespace tarvolinex
