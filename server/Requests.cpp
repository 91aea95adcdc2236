#include "server/Requests.h"

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Pages.h"
#include "server/Parsing.h"
#include "server/References.h"
#include "server/Upload.h"

namespace tarvolinex::server {

namespace {

Answer PageAnswer(int status, std::string body, const Reader& reader, std::string note) {
  return {status, "text/html; charset=utf-8", std::move(body),
          "default-src 'none'; style-src 'nonce-" + reader.nonce +
              "'; img-src 'self' data:; base-uri 'none'; form-action 'none'; frame-ancestors 'none'",
          std::move(note)};
}

Answer ShowLink(const Request& request, const ServerSettings& settings, const Reader& reader) {
  constexpr int kNotFound = 404, kGone = 410, kTooMany = 429;
  const Store store(settings.data);
  const auto query = ReadQuery(request.query);
  const auto asked = query.find("id");
  const std::string id = asked == query.end() ? "" : asked->second;
  if (store.TooManyMisses(request.address, request.now)) {
    return PageAnswer(kTooMany, NoLinkPage(NoLink::TooMany, reader), reader, "too many unknown links");
  }
  const auto record = IsIdentifier(id) ? store.Find(id) : std::nullopt;
  if (!record) {
    store.CountMiss(request.address, request.now);
    return PageAnswer(kNotFound, NoLinkPage(NoLink::Unknown, reader), reader, "unknown link");
  }
  if (record->ended == "withdrawn") {
    return PageAnswer(kGone, NoLinkPage(NoLink::Withdrawn, reader), reader, "withdrawn id=" + id);
  }
  if (!record->ended.empty() || record->expires <= request.now) {
    return PageAnswer(kGone, NoLinkPage(NoLink::Expired, reader), reader, "expired id=" + id);
  }
  return PageAnswer(200, LinkPage(*record, reader), reader, "shown id=" + id);
}

// The administrator's file: the newest version in its first line, where to get it in the second.
Answer ShowVersion(const Request& request, const ServerSettings& settings, const Reader& reader) {
  const auto query = ReadQuery(request.query);
  const auto used = query.find("ver");
  Versions versions;
  if (used != query.end()) versions.used = FirstCharacters(used->second, 20);
  if (versions.used.find_first_not_of("0123456789.") != std::string::npos) versions.used.clear();
  if (FileExists(settings.version)) {
    const std::string text = ReplaceAll(ReadFile(settings.version), "\r", "");
    const auto lines = Split(text, '\n');
    versions.newest = Trim(lines[0]);
    if (lines.size() > 1) versions.address = Trim(lines[1]);
  }
  return PageAnswer(200, VersionPage(versions, reader), reader, "ver=" + versions.used);
}

}  // namespace

Answer AnswerRequest(const Request& request, const ServerSettings& settings) {
  constexpr int kNotFound = 404, kFailed = 500;
  try {
    if (request.action == "upload") return TakeUpload(request, settings);
    const Reader reader = {LanguageOf(request.language), RandomName()};
    if (request.action == "link") return ShowLink(request, settings, reader);
    if (request.action == "version") return ShowVersion(request, settings, reader);
  } catch (const std::exception& failure) {
    return {kFailed, "text/plain", "The server cannot do this now. Please try again later.\n", "", failure.what()};
  }
  return {kNotFound, "text/plain", "There is nothing here.\n", "", "unknown page"};
}

}  // namespace tarvolinex::server
