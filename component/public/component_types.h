#pragma once

#include <QString>

namespace orvo {

// Which list a LookUpList shows.
enum LookUpListTypes {
    lulProvider = 0,
    lulPhysician1 = 1,
    lulPhysician2 = 2,
    lulReferInOut = 3,
    lulReferral = 4,
    lulFamilyHead = 5,
    lulEmployee = 6,
    lulInsuranceCo = 7,
    lulEmployer = 8,
    lulGroupPlan = 9,
    lulInsGroup = 10,
    lulRecallMaster = 11,
    lulPharmacy = 12,
    lulCapPlans = 13,
};

// The tab the employer screen opens on.
enum EmployerStartTab {
    estEmployer = 0,
    estInsurancePlan = 1,
    estCoverage = 2,
};

// The window title of a list when the host sets none. Empty for a value outside the type.
inline QString LookUpListTitle(LookUpListTypes type) {
    switch (type) {
        case lulProvider:
            return QStringLiteral("Provider List");
        case lulPhysician1:
        case lulPhysician2:
            return QStringLiteral("Physician List");
        case lulReferInOut:
            return QStringLiteral("Refer In/Out List");
        case lulReferral:
            return QStringLiteral("Referred By List");
        case lulFamilyHead:
            return QStringLiteral("Family Head List");
        case lulEmployee:
            return QStringLiteral("Employee List");
        case lulInsuranceCo:
            return QStringLiteral("Insurance Company List");
        case lulEmployer:
            return QStringLiteral("Employer List");
        case lulGroupPlan:
            return QStringLiteral("Group Plan List");
        case lulInsGroup:
            return QStringLiteral("Insurance Group List");
        case lulRecallMaster:
            return QStringLiteral("Recall Master List");
        case lulPharmacy:
            return QStringLiteral("Pharmacy List");
        case lulCapPlans:
            return QStringLiteral("Managed Care Plans List");
    }
    return {};
}

// The person-type field a person list hands to the host before it runs; empty for the lists
// that are not lists of persons.
inline QString LookUpListPersonTypeField(LookUpListTypes type) {
    switch (type) {
        case lulProvider:
            return QStringLiteral("pTypDoc");
        case lulPhysician1:
            return QStringLiteral("pTypPhy1");
        case lulPhysician2:
            return QStringLiteral("pTypPhy2");
        case lulReferInOut:
            return QStringLiteral("pTypPhyRefOut");
        case lulReferral:
            return QStringLiteral("pTypRef");
        case lulFamilyHead:
            return QStringLiteral("pTypPat");
        case lulEmployee:
            return QStringLiteral("pTypEmp");
        default:
            return {};
    }
}

}  // namespace orvo
