#pragma once

#include "platform/schema/schema.h"

namespace orvo::tools {

// Stored widths of the city, state and zip list. They are those of every address that a row
// fills (a person's, a carrier's, an employer's), so a chosen row always fits its fields.
inline constexpr int kZipCityWidth = 30;
inline constexpr int kZipStateWidth = 2;
inline constexpr int kZipCodeWidth = 10;

// The city, state and zip list behind every address field.
void DeclareToolsTables(schema::Catalog& catalog);

}  // namespace orvo::tools
