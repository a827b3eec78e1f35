#pragma once

#include "host/host_session.h"

namespace orvo::host {

// Fills an empty practice with a small made-up office: logins, carriers, pharmacies, electronic
// payers, and employer-plan links with subscribers and coverages, so that every screen has
// something to show. Does nothing to a practice that already has carriers.
// Answers whether it seeded.
bool SeedDemoPractice(HostSession& session);

}  // namespace orvo::host
