#include "platform/network/MailMessage.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <memory>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

struct Unref {
  template <typename T>
  void operator()(T* object) const {
    g_object_unref(object);
  }
};
template <typename T>
using Owned = std::unique_ptr<T, Unref>;

std::string OneLine(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = ' ';
  }
  return text;
}

// Named mailboxes are written by the library; a name must not carry control characters into a header.
void AddMailbox(GMimeMessage* message, GMimeAddressType kind, const MailAddress& address) {
  const std::string name = OneLine(address.name);
  g_mime_message_add_mailbox(message, kind, name.empty() ? nullptr : name.c_str(), OneLine(address.address).c_str());
}

void SetContent(GMimePart* part, const std::string& bytes, GMimeContentEncoding encoding) {
  g_mime_part_set_content_encoding(part, encoding);
  const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(bytes.data(), bytes.size()));
  const Owned<GMimeDataWrapper> content(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  g_mime_part_set_content(part, content.get());
}

Owned<GMimeObject> TextPart(const std::string& text) {
  // The library's own part for texts takes another character set where that suffices.
  GMimePart* part = g_mime_part_new_with_type("text", "plain");
  g_mime_object_set_content_type_parameter(GMIME_OBJECT(part), "charset", "utf-8");
  SetContent(part, ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n"), GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
  return Owned<GMimeObject>(GMIME_OBJECT(part));
}

Owned<GMimeObject> AttachmentPart(const std::string& bytes, const std::string& name) {
  const bool zip = EndsWithNoCase(name, ".zip");
  GMimePart* part = g_mime_part_new_with_type("application", zip ? "zip" : "octet-stream");
  g_mime_part_set_filename(part, name.c_str());
  SetContent(part, bytes, GMIME_CONTENT_ENCODING_BASE64);
  return Owned<GMimeObject>(GMIME_OBJECT(part));
}

std::string ReadAttachment(const std::string& path) {
  try {
    return ReadFile(path);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(kMailAttachmentMissing, failure.Description());
  }
}

std::string Written(GMimeMessage* message) {
  GMimeFormatOptions* format = g_mime_format_options_new();
  g_mime_format_options_set_newline_format(format, GMIME_NEWLINE_FORMAT_DOS);
  char* text = g_mime_object_to_string(GMIME_OBJECT(message), format);
  g_mime_format_options_free(format);
  std::string bytes(text);
  g_free(text);
  return bytes;
}

std::string MessageId(const std::string& address) {
  char* id = g_mime_utils_generate_message_id(address.substr(address.find('@') + 1).c_str());
  std::string text(id);
  g_free(id);
  return text;
}

}  // namespace

MailAddress ParseMailAddress(const std::string& text) {
  const auto open = text.rfind('<'), close = text.rfind('>');
  if (open == std::string::npos || close == std::string::npos || close < open) return {"", std::string(Trim(text))};
  std::string name(Trim(std::string_view(text).substr(0, open)));
  if (name.size() > 1 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
  return {name, std::string(Trim(std::string_view(text).substr(open + 1, close - open - 1)))};
}

bool IsMailAddress(const std::string& address) {
  const auto at = address.find('@');
  const bool two = at != std::string::npos && at > 0 && at + 1 < address.size() && address.rfind('@') == at;
  return two && std::none_of(address.begin(), address.end(), [](char c) {
           return static_cast<unsigned char>(c) <= ' ' || c == 0x7F ||
                  std::string_view("<>,;:\"()[]\\").find(c) != std::string_view::npos;
         });
}

std::string MailMessage::Bytes() const {
  static const bool started = [] {
    g_mime_init();
    return true;
  }();
  static_cast<void>(started);
  const Owned<GMimeMessage> message(g_mime_message_new(TRUE));
  AddMailbox(message.get(), GMIME_ADDRESS_TYPE_FROM, from);
  for (const MailAddress& recipient : to) AddMailbox(message.get(), GMIME_ADDRESS_TYPE_TO, recipient);
  g_mime_message_set_subject(message.get(), OneLine(subject).c_str(), "utf-8");
  GDateTime* now = g_date_time_new_now_local();
  g_mime_message_set_date(message.get(), now);
  g_date_time_unref(now);
  g_mime_message_set_message_id(message.get(), MessageId(from.address).c_str());
  Owned<GMimeObject> body = TextPart(text);
  if (attachmentPath.empty()) {
    g_mime_message_set_mime_part(message.get(), body.get());
    return Written(message.get());
  }
  const std::string bytes = ReadAttachment(attachmentPath);
  const Owned<GMimeMultipart> both(g_mime_multipart_new_with_subtype("mixed"));
  g_mime_multipart_add(both.get(), body.get());
  g_mime_multipart_add(both.get(), AttachmentPart(bytes, attachmentName).get());
  g_mime_message_set_mime_part(message.get(), GMIME_OBJECT(both.get()));
  return Written(message.get());
}

}  // namespace tarvolinex
