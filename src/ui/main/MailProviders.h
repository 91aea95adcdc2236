// Mail providers that many people use: what has to be known to send through them.
#pragma once

#include <span>
#include <string_view>

#include "platform/network/MailProfiles.h"

namespace tarvolinex {

struct MailProvider {
  const char* name;
  const char* domains;  // of its addresses, with a blank between them; "" when they are the customers' own
  const char* server;   // with its port
  MailSecurity security;
  const char* advice;  // what its customers must do first; "" for nothing
};

std::span<const MailProvider> MailProviders();

// The one whose customers have such addresses; nullptr when none is known.
const MailProvider* ProviderOfAddress(std::string_view address);
// The one with exactly this server and security; nullptr when none has.
const MailProvider* ProviderAt(std::string_view server, MailSecurity security);

}  // namespace tarvolinex
