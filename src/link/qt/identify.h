#pragma once
// Identifying the module from a front end without the identification dialog: SignIn's gate
// (open the port, the once-per-run "Telvane ready ?") followed by the identity query.

#include <string>
#include <utility>
#include <vector>

#include "link/identity.h"
#include "link/sign_in.h"

namespace quillon {

// 0 ok, 1 port not opened, 2 declined, 3 cancelled, 4 time-out, 5 no connection, 6 no response,
// 7 version conflict. The decoded identity is in context.session.identity.
[[nodiscard]] Task<int> IdentifyModule(LinkContext& context);

// What the identification dialog shows, as (caption, value) pairs in its order; the values
// without the leading blank the labels carry.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> IdentityFields(
    const DeviceIdentity& identity);

}  // namespace quillon
