// An upload, from the request to its place.
#pragma once

#include "server/Requests.h"

namespace tarvolinex::server {

// POST: takes an install file of a known reference, or says in a sentence why not. GET: whether the reference is known
// and what it has left. The answer is a text: "<STATUS>", the sentence, "</STATUS>", and SUCCESS or ERROR.
Answer TakeUpload(const Request& request, const ServerSettings& settings);

}  // namespace tarvolinex::server
