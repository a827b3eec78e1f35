#include "component/surface/lookup_list_instance.h"

#include "component/public/component_error.h"

namespace orvo::component {
namespace {

[[noreturn]] void NotYet(const char* method) {
    throw NotImplemented(QStringLiteral("LookUpList.") + QString::fromLatin1(method));
}

}  // namespace

void LookUpListInstance::ShowList(bool) {
    NotYet("ShowList");
}

bool LookUpListInstance::SetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("SetPrinter");
}

bool LookUpListInstance::GetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("GetPrinter");
}

}  // namespace orvo::component
