#include "insurance/build_new_command.h"

namespace orvo::insurance {

QString BuildNewCommand(const QString& text) {
    const QChar lf(10);
    if (text.contains(QChar(1)))
        return QStringLiteral("-1") + lf + text.mid(4) + lf;
    return QStringLiteral("0") + lf + text.mid(3) + lf;
}

}  // namespace orvo::insurance
