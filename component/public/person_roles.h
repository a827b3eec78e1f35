#pragma once

#include <QString>

namespace orvo {

// What the component and its host both know of a person's row.

// The condition on a PATable row that makes the person a family head: the row names itself
// (or nobody) as head and the person is in the patient file. Every list of heads uses this
// text, and the host's list of family heads is kept by it.
inline const QString kFamilyHeadFilter = QStringLiteral(
    "((pFAMHEAIND = pID or pFAMHEAIND is Null or pFAMHEAIND = 0) and pTypPat >= '1')");

}  // namespace orvo
