#pragma once

#include "platform/schema/schema.h"

namespace orvo::insurance {

// Carriers, pharmacies, and the chain of employer-plan links, subscriber links and coverages.
void DeclareInsuranceTables(schema::Catalog& catalog);

}  // namespace orvo::insurance
