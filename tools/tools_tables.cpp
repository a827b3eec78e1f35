#include "tools/tools_tables.h"

namespace orvo::tools {
using schema::Identity;
using schema::Text;

void DeclareToolsTables(schema::Catalog& catalog) {
    const QString city = QStringLiteral("ZipCodCit");
    const QString zip = QStringLiteral("ZipCodZip");
    // The search as typed reads "col >= key ORDER BY col, other": each order has its index, so
    // every keystroke is a short range scan, not a sort of the whole list.
    catalog.Add({QStringLiteral("ZipCodTable"),
                 {Identity(QStringLiteral("ZipCodID")), Text(city, kZipCityWidth),
                  Text(QStringLiteral("ZipCodSta"), kZipStateWidth), Text(zip, kZipCodeWidth)},
                 {{city, zip}, {zip, city}}});
}

}  // namespace orvo::tools
