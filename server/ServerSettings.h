// What the administrator has set, in "server.conf": lines KEY = VALUE; "#" begins a remark.
#pragma once

#include <cstdint>
#include <string>

namespace tarvolinex::server {

struct ServerSettings {
  std::string data = "/var/lib/tarvolinex-server";               // what is stored; docs/server.md has its folders
  std::string references = "/etc/tarvolinex-server/references";  // who may upload
  std::string version = "/etc/tarvolinex-server/version";        // what the version page tells
  std::string log = "/var/log/tarvolinex-server/requests.log";   // a line a request
  std::string known = "/var/lib/tarvolinex-server/known";        // self-extractors and page templates that are ours
  std::int64_t days = 90;                                        // how long a link is valid
  std::int64_t largest = 20 << 20;                               // bytes of an install file; the file has MB
  std::int64_t unpacked = 60 << 20;                              // bytes of what is in it; the file has MB
  std::int64_t keepFree = 200 << 20;  // bytes of the disk that no upload may take; the file has MB
};

// The file that the environment names in TARVOLINEX_SERVER_CONF, else "/etc/tarvolinex-server/server.conf"; a file that
// is missing sets nothing. Throws RuntimeError naming the line that is not understood.
ServerSettings ReadServerSettings();

}  // namespace tarvolinex::server
